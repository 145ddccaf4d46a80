# The manual as one page that needs nothing beside it, manual.html in the build folder. Made when asked for by this
# target, and then always: that is quicker than keeping a list of its pictures.
add_custom_target(manual
    COMMAND ${PROJECT_SOURCE_DIR}/tools/manual ${PROJECT_BINARY_DIR}/manual.html
    VERBATIM)
