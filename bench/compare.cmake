if(ZORVANE_BENCH)
    zorvane_bench(zv_view_bench SOURCES view_bench.cpp USES zv_compare)
endif()
