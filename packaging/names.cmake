# CPack includes this once for each kind of package.
if(CPACK_GENERATOR STREQUAL "NSIS")
    string(APPEND CPACK_PACKAGE_FILE_NAME -setup)
endif()
# Both kinds carry the time of the release, the zip as local time, so that two builds are the same file.
set(ENV{SOURCE_DATE_EPOCH} ${CPACK_RELEASE_TIME})
set(ENV{TZ} UTC)
