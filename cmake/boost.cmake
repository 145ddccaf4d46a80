# Boost.Regex is header-only. A cross build must not see the host's own headers, so it gets a folder that
# holds a link to Boost's alone.
add_library(boost_headers INTERFACE)
if(CMAKE_CROSSCOMPILING)
    set(boost_link_folder ${PROJECT_BINARY_DIR}/boost-include)
    file(MAKE_DIRECTORY ${boost_link_folder})
    if(NOT EXISTS /usr/include/boost/regex.hpp)
        message(FATAL_ERROR "Boost's headers are missing: install the package libboost1.81-dev or run tools/setup")
    endif()
    file(CREATE_LINK /usr/include/boost ${boost_link_folder}/boost SYMBOLIC)
    target_include_directories(boost_headers SYSTEM INTERFACE ${boost_link_folder})
else()
    find_package(Boost 1.76 REQUIRED)
    target_include_directories(boost_headers SYSTEM INTERFACE ${Boost_INCLUDE_DIRS})
endif()
# The character classes of the C library: those of C++ locales add 750 kB of the standard library to the program.
target_compile_definitions(boost_headers INTERFACE BOOST_REGEX_STANDALONE BOOST_REGEX_USE_C_LOCALE)
