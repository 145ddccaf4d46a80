# CPack includes this file once for each generator.
if(CPACK_GENERATOR STREQUAL "NSIS")
    string(APPEND CPACK_PACKAGE_FILE_NAME -setup)
endif()
# Both packages contain the release time instead of the build time, so that builds are reproducible. TZ is for the
# zip, which contains local time.
set(ENV{SOURCE_DATE_EPOCH} ${CPACK_RELEASE_TIME})
set(ENV{TZ} UTC)
