if(ZORVANE_BENCH)
    zorvane_bench(zv_editor_bench SOURCES editor_bench.cpp USES zv_document)
    zorvane_bench(zv_document_bench SOURCES document_bench.cpp USES zv_document)
endif()
