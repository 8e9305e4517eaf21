# The libraries from outside. Static where Debian ships an archive: a start costs milliseconds, and
# the dynamic linker's share of it is the largest. Shared libraries of ours can't take archives in.

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)

function(zorvane_external name archive header)
    if(ZORVANE_SHARED)
        string(REGEX REPLACE "\\.a$" ".so" archive ${archive})
    endif()
    find_library(${name}_ARCHIVE NAMES ${archive} REQUIRED)
    find_path(${name}_INCLUDE NAMES ${header} REQUIRED)
    add_library(${name} INTERFACE)
    target_include_directories(${name} SYSTEM INTERFACE ${${name}_INCLUDE})
    target_link_libraries(${name} INTERFACE ${${name}_ARCHIVE})
endfunction()

zorvane_external(zv_ext_pcre2 libpcre2-8.a pcre2.h)
target_compile_definitions(zv_ext_pcre2 INTERFACE PCRE2_CODE_UNIT_WIDTH=8)
zorvane_external(zv_ext_re2 libre2.a re2/re2.h)
zorvane_external(zv_ext_zstd libzstd.a zstd.h)
zorvane_external(zv_ext_uchardet libuchardet.a uchardet/uchardet.h)
zorvane_external(zv_ext_icu libicuuc.a unicode/ucnv.h)
zorvane_external(zv_ext_icudata libicudata.a unicode/ucnv.h)
target_link_libraries(zv_ext_icu INTERFACE zv_ext_icudata Threads::Threads dl)

# Header-only use: the hash is inlined where it is called.
find_path(zv_ext_xxhash_INCLUDE NAMES xxhash.h REQUIRED)
add_library(zv_ext_xxhash INTERFACE)
target_include_directories(zv_ext_xxhash SYSTEM INTERFACE ${zv_ext_xxhash_INCLUDE})
target_compile_definitions(zv_ext_xxhash INTERFACE XXH_INLINE_ALL)

# For the readers in zorvane-convert only. Debian ships libzip and poppler as shared libraries alone.
zorvane_external(zv_ext_zip libzip.so zip.h)
zorvane_external(zv_ext_zlib libz.so zlib.h)
zorvane_external(zv_ext_pugixml libpugixml.a pugixml.hpp)
zorvane_external(zv_ext_gumbo libgumbo.a gumbo.h)
zorvane_external(zv_ext_crypto libcrypto.so openssl/evp.h)
zorvane_external(zv_ext_seccomp libseccomp.a seccomp.h)
zorvane_external(zv_ext_poppler libpoppler.so poppler/PDFDoc.h)
target_include_directories(zv_ext_poppler SYSTEM INTERFACE ${zv_ext_poppler_INCLUDE}/poppler)

find_package(fmt REQUIRED)
add_library(zv_ext_fmt ALIAS fmt::fmt)
find_path(zv_ext_cli11_INCLUDE NAMES CLI/CLI.hpp REQUIRED)
add_library(zv_ext_cli11 INTERFACE)
target_include_directories(zv_ext_cli11 SYSTEM INTERFACE ${zv_ext_cli11_INCLUDE})
find_package(nlohmann_json REQUIRED)

if(ZORVANE_TESTS)
    find_package(GTest REQUIRED)
endif()
if(ZORVANE_BENCH)
    find_package(benchmark REQUIRED)
endif()

# For the windows only. "emit" and its like are names of ours as well as macros of Qt.
if(ZORVANE_GUI)
    find_package(Qt6 6.4 REQUIRED COMPONENTS Core DBus Gui PrintSupport Svg Test Widgets)
    add_library(zv_ext_qt INTERFACE)
    target_link_libraries(zv_ext_qt INTERFACE Qt6::Core Qt6::Gui Qt6::Widgets Qt6::Svg)
    target_compile_definitions(zv_ext_qt INTERFACE QT_NO_KEYWORDS QT_NO_FOREACH
        QT_DISABLE_DEPRECATED_BEFORE=0x060400)
endif()
