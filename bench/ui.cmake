if(ZORVANE_GUI AND ZORVANE_BENCH)
    add_executable(zv_text_view_bench text_view_bench.cpp)
    target_link_libraries(zv_text_view_bench PRIVATE zorvane_compile_options zv_compare_ui
        benchmark::benchmark)
endif()
