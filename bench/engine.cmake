if(ZORVANE_BENCH)
    add_executable(zv_engine_diff engine_diff.cpp)
    target_link_libraries(zv_engine_diff PRIVATE zorvane_compile_options zv_engine)
endif()
