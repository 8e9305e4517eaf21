if(ZORVANE_GUI AND ZORVANE_BENCH)
    add_executable(zv_text_view_bench text_view_bench.cpp)
    target_link_libraries(zv_text_view_bench PRIVATE zorvane_compile_options zv_compare_ui
        benchmark::benchmark)
    add_executable(zv_folder_grid_times folder_grid_times.cpp)
    target_link_libraries(zv_folder_grid_times PRIVATE zorvane_compile_options zv_app_ui)
    add_executable(zv_compare_window_times compare_window_times.cpp)
    target_link_libraries(zv_compare_window_times PRIVATE zorvane_compile_options zv_app_ui)
endif()
