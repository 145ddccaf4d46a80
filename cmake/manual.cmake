# The manual as one page that needs nothing beside it, manual.html in the build folder: only when asked for, by the
# target of that name.
set(manual ${PROJECT_BINARY_DIR}/manual.html)
file(GLOB pictures CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/images/*.png)
add_custom_command(OUTPUT ${manual}
    COMMAND ${PROJECT_SOURCE_DIR}/tools/manual ${manual}
    DEPENDS
        ${PROJECT_SOURCE_DIR}/tools/manual
        ${PROJECT_SOURCE_DIR}/docs/manual.md
        ${PROJECT_SOURCE_DIR}/docs/manual.css
        ${pictures}
    VERBATIM)
add_custom_target(manual DEPENDS ${manual})
