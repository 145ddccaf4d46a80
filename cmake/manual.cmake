# Converts the manual to one HTML page, manual.html in the build folder. Always runs, so that its pictures need not be
# listed as dependencies.
add_custom_target(manual
    COMMAND ${PROJECT_SOURCE_DIR}/tools/manual ${PROJECT_BINARY_DIR}/manual.html
    VERBATIM)
