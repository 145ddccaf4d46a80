# What CPack includes once for each kind of package: the installer's name says that it is one.
if(CPACK_GENERATOR STREQUAL "NSIS")
    string(APPEND CPACK_PACKAGE_FILE_NAME -setup)
endif()
