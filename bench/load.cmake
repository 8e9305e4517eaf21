if(ZORVANE_FUZZ)
    zorvane_fuzzer(zv_decrypt_fuzz SOURCES decrypt_fuzz.cpp USES zv_readers)
    zorvane_fuzzer(zv_slides_fuzz SOURCES slides_fuzz.cpp USES zv_readers)
endif()
