# Headers from outside, read once for many files: half of what a compiler does for most of them.
# A set for each kind of target, as their flags differ.
# Headers of our own are in none; a file still names all it uses, which tools/check_apart.py proves.

option(ZORVANE_PRECOMPILE "Precompile headers from outside" ON)

set(nothing ${CMAKE_BINARY_DIR}/precompiled.cpp)
file(GENERATE OUTPUT ${nothing} CONTENT "// Its target holds precompiled headers.\n")

set(standard_headers <algorithm> <array> <atomic> <charconv> <chrono> <cmath> <cstdint> <cstring>
    <filesystem> <functional> <map> <memory> <mutex> <optional> <set> <span> <string> <string_view>
    <thread> <unordered_map> <utility> <vector>)

set(window_headers <QApplication> <QFrame> <QHBoxLayout> <QKeyEvent> <QLabel> <QLineEdit> <QMenu>
    <QMimeData> <QPainter> <QTimer> <QVBoxLayout> <QWidget>)
set(test_headers <fstream> <random> <sstream> <gtest/gtest.h>)

# g++ 12 loses sight of where a precompiled standard string comes from, and warns of copies in it that
# are in order.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(untrue_warnings -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
endif()

# zorvane_use_precompiled(target set): target reads the headers of set, which may be "core", "ui",
# "tests" or "ui_tests".
function(zorvane_use_precompiled target set)
    if(ZORVANE_PRECOMPILE)
        target_compile_options(${target} PRIVATE ${untrue_warnings})
        target_precompile_headers(${target} REUSE_FROM zv_${set}_headers)
    endif()
endfunction()

if(ZORVANE_PRECOMPILE)
    add_library(zv_core_headers OBJECT ${nothing})
    target_link_libraries(zv_core_headers PRIVATE zorvane_compile_options)
    target_precompile_headers(zv_core_headers PRIVATE ${standard_headers})
    if(ZORVANE_GUI)
        add_library(zv_ui_headers OBJECT ${nothing})
        target_link_libraries(zv_ui_headers PRIVATE zorvane_compile_options zv_ext_qt)
        target_precompile_headers(zv_ui_headers PRIVATE ${standard_headers} ${window_headers})
    endif()
    if(ZORVANE_TESTS)
        add_executable(zv_tests_headers ${nothing})
        target_link_libraries(zv_tests_headers PRIVATE zorvane_test_options GTest::gtest_main)
        target_precompile_headers(zv_tests_headers PRIVATE ${standard_headers} ${test_headers})
    endif()
    if(ZORVANE_TESTS AND ZORVANE_GUI)
        add_executable(zv_ui_tests_headers ${nothing})
        target_link_libraries(zv_ui_tests_headers PRIVATE zorvane_test_options zv_ext_qt
            GTest::gtest_main)
        target_precompile_headers(zv_ui_tests_headers PRIVATE ${standard_headers}
            ${window_headers} ${test_headers})
    endif()
endif()
