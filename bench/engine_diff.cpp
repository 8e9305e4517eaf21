// Compares two line files and prints the records as a "normal" listing, for measuring against other
// tools: `zv_engine_diff [-q] ORIGINAL MODIFIED`. -q prints only the number of records.
#include <cstdio>
#include <cstring>

#include "compare/engine/vestrel_x.h"

namespace {

void PrintRange(std::int32_t first, std::int32_t last) {
    std::printf(first == last ? "%d" : "%d,%d", first, last);
}

void PrintRecord(const zorvane::DifferenceRecord& record) {
    PrintRange(record.first_original, record.last_original);
    std::printf("%c", static_cast<char>(record.type));
    PrintRange(record.first_modified, record.last_modified);
    std::printf("\n");
}

}  // namespace

int main(int count, char** arguments) {
    const bool quiet = count > 1 && std::strcmp(arguments[1], "-q") == 0;
    const int first = quiet ? 2 : 1;
    if (count != first + 2) {
        std::fprintf(stderr, "usage: zv_engine_diff [-q] ORIGINAL MODIFIED\n");
        return 2;
    }
    zorvane::VestrelX engine;
    engine.putMasterFile(arguments[first]);
    engine.putSourceFile(arguments[first + 1]);
    const zorvane::Status status = engine.Compare();
    if (!status.ok()) {
        std::fprintf(stderr, "%s\n", status.failure().reason.c_str());
        return 2;
    }
    if (quiet)
        std::printf("%d\n", engine.getDifferenceCount());
    for (const zorvane::DifferenceRecord& record : engine.Records()) {
        if (!quiet)
            PrintRecord(record);
    }
    return engine.getDifferenceCount() == 0 ? 0 : 1;
}
