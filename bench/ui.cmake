if(ZORVANE_GUI AND ZORVANE_BENCH)
    add_executable(zv_view_bench view_bench.cpp)
    target_link_libraries(zv_view_bench PRIVATE zorvane_compile_options zv_compare_ui
        benchmark::benchmark)
endif()
