if(ZORVANE_BENCH)
    zorvane_bench(zv_report_bench SOURCES report_bench.cpp USES zv_reports)
endif()
