# A target gets the compiler and linker options by linking to `project_options`.
add_library(project_options INTERFACE)
target_include_directories(project_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(project_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow
    -Wcast-align -Wcast-qual -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual -Wformat=2
    -Wundef -Wnull-dereference -Wno-format-nonliteral
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wduplicated-branches -Wlogical-op>
    $<$<BOOL:${CORVANE_WERROR}>:-Werror>)

if(WIN32)
    target_compile_definitions(project_options INTERFACE
        NOMINMAX STRICT WIN32_LEAN_AND_MEAN WINVER=0x0601 _WIN32_WINNT=0x0601 _WIN32_IE=0x0700)
    # DWARF 4 is the newest debug format that Wine's debugger reads.
    target_compile_options(project_options INTERFACE -fstack-protector-strong $<$<CONFIG:Debug>:-gdwarf-4>)
    # A program is a single file with the platform's memory protections and, for reproducible builds, no time stamp. Its
    # sections are aligned to pages in the file, because Wine would otherwise copy them into the memory of each process.
    target_link_options(project_options INTERFACE
        -static -fstack-protector-strong
        -Wl,--dynamicbase,--nxcompat,--large-address-aware,--no-insert-timestamp,--file-alignment,4096
        $<$<CONFIG:Release>:-s>)
    set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG" CACHE STRING "" FORCE)

    # The compiler has no sanitizer runtime for this platform, so a failed check traps.
    option(CORVANE_CHECKED "Trap undefined behaviour, check iterators and containers")
    if(CORVANE_CHECKED)
        add_compile_options(-O1 -fsanitize=undefined -fsanitize-undefined-trap-on-error)
        add_compile_definitions(_GLIBCXX_DEBUG _GLIBCXX_DEBUG_PEDANTIC _GLIBCXX_ASSERTIONS)
    endif()
else()
    option(CORVANE_SANITIZE "Compile for the address and undefined-behaviour sanitizers" ON)
    if(CORVANE_SANITIZE)
        add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
        add_link_options(-fsanitize=address,undefined)
    endif()
    if(CORVANE_FUZZ)
        # Reports branches to the fuzzer. Optimised, so that fuzzing is faster.
        add_compile_options(-fsanitize=fuzzer-no-link -O1)
    else()
        # For tools/coverage.
        target_compile_options(project_options INTERFACE --coverage)
        target_link_options(project_options INTERFACE --coverage)
    endif()
endif()
