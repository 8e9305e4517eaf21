if(ZORVANE_FUZZ)
    zorvane_fuzzer(zv_workbook_fuzz SOURCES workbook_fuzz.cpp USES zv_readers)
endif()
