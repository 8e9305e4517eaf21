if(ZORVANE_BENCH)
    zorvane_bench(zv_editor_bench SOURCES editor_bench.cpp USES zv_document)
endif()
