# How every target of the project is compiled, and the three ways to declare one.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(zorvane_compile_options INTERFACE)
target_include_directories(zorvane_compile_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(zorvane_compile_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough -Werror
    -fstack-protector-strong -fstack-clash-protection -fcf-protection)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(zorvane_compile_options INTERFACE -Wduplicated-cond -Wlogical-op)
endif()
if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
    target_compile_options(zorvane_compile_options INTERFACE -D_FORTIFY_SOURCE=2
        -D_GLIBCXX_ASSERTIONS)
endif()
target_link_options(zorvane_compile_options INTERFACE -Wl,-z,relro -Wl,-z,now)
if(ZORVANE_SHARED)
    # What only zorvane-convert has is missing elsewhere, unused.
    target_link_options(zorvane_compile_options INTERFACE
        -Wl,--unresolved-symbols=ignore-all -Wl,-z,lazy)
endif()
if(ZORVANE_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
if(ZORVANE_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
    # clang tells of other things than g++ does; its builds are for finding faults, not for style.
    target_compile_options(zorvane_compile_options INTERFACE -Wno-error)
endif()
if(ZORVANE_TSAN)
    add_compile_options(-fsanitize=thread)
    add_link_options(-fsanitize=thread)
endif()
if(ZORVANE_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()

# Tests are run a few times after each build: less work of the compiler on them is time saved.
add_library(zorvane_test_options INTERFACE)
target_link_libraries(zorvane_test_options INTERFACE zorvane_compile_options GTest::gtest)
target_compile_options(zorvane_test_options INTERFACE -O1 -g1)

# Ten files of a folder are one for the compiler, which then reads their headers, and makes what it makes
# of templates, once: less than half of the work. Names in nameless namespaces of one folder differ
# therefore. tools/check_apart.py proves that each file includes what it uses.
function(zorvane_compile_together target)
    if(NOT ZORVANE_UNITY)
        return()
    endif()
    get_target_property(files ${target} SOURCES)
    set(count 0)
    foreach(file ${files})
        cmake_path(GET file PARENT_PATH folder)
        math(EXPR number "${count} / 10")
        set_source_files_properties(${file} PROPERTIES UNITY_GROUP "${folder}_${number}")
        math(EXPR count "${count} + 1")
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # True of a header; here the file that it speaks of is one of those compiled together.
        target_compile_options(${target} PRIVATE -Wno-subobject-linkage)
    endif()
endfunction()

# zorvane_library(name SOURCES ... USES ...): a layer; USES is its place in the architecture.
function(zorvane_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    if(ARG_SOURCES)
        if(ZORVANE_SHARED)
            add_library(${name} SHARED ${ARG_SOURCES})
            set_target_properties(${name} PROPERTIES DEFINE_SYMBOL "")
        else()
            add_library(${name} STATIC ${ARG_SOURCES})
        endif()
        target_link_libraries(${name} PUBLIC zorvane_compile_options ${ARG_USES})
        zorvane_compile_together(${name})
        if(NOT "zv_ext_qt" IN_LIST ARG_USES)
            zorvane_use_precompiled(${name} core)
        endif()
    else()
        add_library(${name} INTERFACE)
        target_link_libraries(${name} INTERFACE zorvane_compile_options ${ARG_USES})
    endif()
endfunction()

# zorvane_test(name SOURCES ... USES ... HEADERS set): one test program for one folder, run by CTest as
# a whole; HEADERS is the set of its precompiled headers, "tests" unless told.
function(zorvane_test name)
    cmake_parse_arguments(ARG "" "HEADERS" "SOURCES;USES" ${ARGN})
    if(NOT ARG_SOURCES)
        return()
    endif()
    if(NOT ARG_HEADERS)
        set(ARG_HEADERS tests)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE zorvane_test_options ${ARG_USES} GTest::gtest_main)
    zorvane_use_precompiled(${name} ${ARG_HEADERS})
    zorvane_compile_together(${name})
    target_compile_definitions(${name} PRIVATE
        ZORVANE_TEST_DATA="${CMAKE_SOURCE_DIR}/tests/data"
        ZORVANE_CORPUS="${CMAKE_SOURCE_DIR}/../shared/corpus")
    add_test(NAME ${name} COMMAND ${name})
endfunction()

# zorvane_bench(name SOURCES ... USES ...): one Google Benchmark program.
function(zorvane_bench name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE zorvane_compile_options ${ARG_USES}
        benchmark::benchmark_main)
endfunction()

# zorvane_fuzzer(name SOURCES ... USES ...): one libFuzzer program.
function(zorvane_fuzzer name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE zorvane_compile_options ${ARG_USES})
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
endfunction()

# zorvane_ui_library(name SOURCES ... USES ...): windows; the only code that sees Qt.
function(zorvane_ui_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    zorvane_library(${name} SOURCES ${ARG_SOURCES} USES ${ARG_USES} zv_ext_qt)
    if(ARG_SOURCES)
        set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
        zorvane_use_precompiled(${name} ui)
    endif()
endfunction()

# zorvane_ui_test(name SOURCES ... USES ...): a test of windows, which runs without a display.
function(zorvane_ui_test name)
    zorvane_test(${name} ${ARGN} HEADERS ui_tests)
    target_link_libraries(${name} PRIVATE Qt6::Test)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()
