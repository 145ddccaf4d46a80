# The googletest package contains only sources, which are built here with the compiler of the tests.
set(INSTALL_GTEST OFF)
add_subdirectory(${GTEST_SOURCE_FOLDER} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)

# Linked into every test program.
set(support ${PROJECT_SOURCE_DIR}/tests/support)
add_library(test_main STATIC EXCLUDE_FROM_ALL ${support}/main.cpp)
target_link_libraries(test_main PUBLIC project_options GTest::gmock)
target_precompile_headers(test_main PRIVATE <gmock/gmock.h>)
# Without optimisation, tests compile faster and run equally fast.
target_compile_options(test_main PUBLIC $<$<CONFIG:Release>:-O0>)
# These sanitizer checks of every pointer would take a third of the tests' compile time. The address sanitizer still
# finds null and dangling pointers.
if(CORVANE_SANITIZE)
    target_compile_options(test_main PUBLIC -fno-sanitize=null,alignment,vptr,object-size)
    foreach(library IN ITEMS gtest gmock)
        target_compile_options(${library} PRIVATE -fno-sanitize=all)
    endforeach()
endif()

# For tools/coverage: removes old line counters before the native tests run.
if(NOT WIN32)
    add_test(NAME native.fresh COMMAND find ${PROJECT_BINARY_DIR} -name *.gcda -delete)
    set_tests_properties(native.fresh PROPERTIES FIXTURES_SETUP counters_cleared)
endif()

# Replaces the allocator of a program that links it.
add_library(counted_allocations OBJECT EXCLUDE_FROM_ALL ${support}/allocations.cpp)
target_link_libraries(counted_allocations PRIVATE project_options)

# DPI values above the default of 96. Font sizes do not grow in proportion to them, so several are tested.
set(CORVANE_RESOLUTIONS 120 144 192)

# Zones with and without daylight saving time, north and south of the equator, east and west of Greenwich, some with
# offsets of half or quarter hours.
set(CORVANE_ZONES America/New_York Europe/Berlin Australia/Sydney Asia/Kolkata Asia/Kathmandu Pacific/Auckland
    America/St_Johns)
set(CORVANE_UNCHANGING_ZONES Asia/Kolkata Asia/Kathmandu)
# Native runs are slow under the sanitizers, so they use only one zone on each side of Greenwich.
if(NOT WIN32)
    set(CORVANE_ZONES America/St_Johns Australia/Sydney)
endif()

# corvane_test_run(NAME COMMAND command... [ZONE zone] [WINE option...] [TIMEOUT seconds])
#
# Adds a run of a test program. In native builds, "native." precedes the name. In cross builds, the program runs under
# tools/wine with the options after WINE.
function(corvane_test_run name)
    cmake_parse_arguments(arg "" "ZONE;TIMEOUT;FAILS" "COMMAND;WINE" ${ARGN})
    if(WIN32)
        if(arg_ZONE)
            list(APPEND arg_WINE --zone ${arg_ZONE})
        endif()
        if(CORVANE_CHECKED)
            list(APPEND arg_WINE --check-heap)
        endif()
        if(CMAKE_CROSSCOMPILING)
            list(PREPEND arg_COMMAND ${PROJECT_SOURCE_DIR}/tools/wine ${arg_WINE})
        endif()
    else()
        string(PREPEND name native.)
    endif()
    if(arg_FAILS)
        list(PREPEND arg_COMMAND ${support}/fails ${arg_FAILS})
    endif()
    add_test(NAME ${name} COMMAND ${arg_COMMAND})
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 300)
    endif()
    # Tests of a checked build take several times as long.
    if(CORVANE_CHECKED)
        math(EXPR arg_TIMEOUT "${arg_TIMEOUT} * 5")
    endif()
    set_tests_properties(${name} PROPERTIES TIMEOUT ${arg_TIMEOUT})
    if(WIN32)
        # Wine prints this at every crash, even when the exit status is lost.
        set_tests_properties(${name} PROPERTIES FAIL_REGULAR_EXPRESSION "starting debugger")
    else()
        set_tests_properties(${name} PROPERTIES FIXTURES_REQUIRED counters_cleared FIXTURES_SETUP counters_written)
    endif()
    if("--at" IN_LIST arg_WINE OR "--speed" IN_LIST arg_WINE OR "--settable" IN_LIST arg_WINE)
        set_tests_properties(${name} PROPERTIES LABELS set-clock)
    endif()
    if(arg_ZONE)
        # TZ sets the zone of native runs; SCHEDULER_ZONE lets the tests check the zone.
        set_tests_properties(${name} PROPERTIES ENVIRONMENT "TZ=${arg_ZONE};SCHEDULER_ZONE=${arg_ZONE}")
    endif()
endfunction()

# Sets `suites` to the names of the test suites in FILES.
function(corvane_find_suites suites)
    set(found)
    foreach(file IN LISTS ARGN)
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
        file(STRINGS ${file} lines REGEX "^(TYPED_)?TEST(_[FP])?\\(")
        # GoogleTest skips disabled tests.
        list(FILTER lines EXCLUDE REGEX "DISABLED_")
        list(TRANSFORM lines REPLACE "^[A-Z_]+\\( *([A-Za-z0-9_]+).*" "\\1")
        list(APPEND found ${lines})
    endforeach()
    list(REMOVE_DUPLICATES found)
    set(${suites} ${found} PARENT_SCOPE)
endfunction()

# Sets `filter` to the argument that makes a test program run only SUITES. Full names are INSTANCE/SUITE.TEST/VALUE for
# value-parameterised tests and SUITE/TYPE.TEST for typed tests.
function(corvane_filter filter)
    list(TRANSFORM ARGN REPLACE "(.+)" "\\1.*:*/\\1.*:\\1/*" OUTPUT_VARIABLE patterns)
    list(JOIN patterns : patterns)
    set(${filter} --gtest_filter=${patterns} PARENT_SCOPE)
endfunction()

# corvane_tests(PROGRAM FILES file... LIBRARIES library... [ZONED suite...] [CHANGES suite...] [DPI suite...]
#               [NEEDS target...] [WINE option...] [TIMEOUT seconds])
#
# Adds the test program PROGRAM.tests of FILES, and a test run PROGRAM.SUITE for each suite except CHANGES.
#   ZONED    suites that also run in each of CORVANE_ZONES, one run per zone
#   CHANGES  suites that run only in those of CORVANE_ZONES that have daylight saving time
#   DPI      suites that also run at each of CORVANE_RESOLUTIONS
#   NEEDS    targets that the tests start
#   WINE     options for tools/wine
function(corvane_tests program)
    cmake_parse_arguments(arg "" "TIMEOUT" "FILES;LIBRARIES;ZONED;CHANGES;DPI;NEEDS;WINE" ${ARGN})
    set(target ${program}.tests)
    add_executable(${target} ${arg_FILES})
    target_link_libraries(${target} PRIVATE ${arg_LIBRARIES} test_main)
    target_precompile_headers(${target} REUSE_FROM test_main)
    if(arg_NEEDS)
        add_dependencies(${target} ${arg_NEEDS})
    endif()

    set(options WINE ${arg_WINE} TIMEOUT ${arg_TIMEOUT})
    corvane_find_suites(suites ${arg_FILES})
    list(REMOVE_ITEM suites "" ${arg_CHANGES})
    foreach(suite IN LISTS suites)
        corvane_filter(filter ${suite})
        corvane_test_run(${program}.${suite} COMMAND ${target} ${filter} ${options})
    endforeach()
    if(NOT WIN32)
        set(arg_DPI)
    endif()
    foreach(suite IN LISTS arg_DPI)
        corvane_filter(filter ${suite})
        foreach(dpi IN LISTS CORVANE_RESOLUTIONS)
            corvane_test_run(${program}.${suite}@${dpi}dpi COMMAND ${target} ${filter} ${options} WINE --dpi ${dpi})
        endforeach()
    endforeach()
    if(arg_ZONED)
        foreach(zone IN LISTS CORVANE_ZONES)
            set(suites ${arg_ZONED})
            if(NOT zone IN_LIST CORVANE_UNCHANGING_ZONES)
                list(APPEND suites ${arg_CHANGES})
            endif()
            corvane_filter(filter ${suites})
            corvane_test_run(${program}@${zone} COMMAND ${target} ${filter} ZONE ${zone} ${options})
        endforeach()
    endif()
endfunction()
