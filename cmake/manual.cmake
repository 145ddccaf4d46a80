# Writes the manual as one HTML page, manual.html in the build folder. Always runs: quicker than tracking its pictures.
add_custom_target(manual
    COMMAND ${PROJECT_SOURCE_DIR}/tools/manual ${PROJECT_BINARY_DIR}/manual.html
    VERBATIM)
