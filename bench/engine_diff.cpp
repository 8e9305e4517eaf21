// Compares two line files and prints a "normal" listing, for measuring against other tools:
// `zv_engine_diff [-q] ORIGINAL MODIFIED`. -q prints only the number of hunks. Records between
// which no equal line stands are one hunk.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <vector>

#include "compare/engine/vestrel_x.h"

namespace {

void PrintRange(std::int32_t first, std::int32_t last) {
    std::printf(first == last ? "%d" : "%d,%d", first, last);
}

using zorvane::DifferenceRecord;
using zorvane::DifferenceType;
using zorvane::kBothSides;
using zorvane::ParagraphNumber;
using zorvane::Side;

// Records that no equal line parts are one hunk, as in the listings of other tools.
bool Touch(const DifferenceRecord& front, const DifferenceRecord& back) {
    return std::all_of(std::begin(kBothSides), std::end(kBothSides), [&](Side side) {
        return back.InFront(side) == front.paragraphs[side].last;
    });
}

DifferenceRecord Joined(const DifferenceRecord& front, const DifferenceRecord& back) {
    const std::int32_t originals = front.Count(Side::Original) + back.Count(Side::Original);
    const std::int32_t modifieds = front.Count(Side::Modified) + back.Count(Side::Modified);
    DifferenceRecord joined = back;
    joined.type = originals == 0   ? DifferenceType::Addition
                  : modifieds == 0 ? DifferenceType::Deletion
                                   : DifferenceType::Change;
    for (const Side side : kBothSides) {
        const std::int32_t count = front.Count(side) + back.Count(side);
        const ParagraphNumber last = back.paragraphs[side].last;
        joined.paragraphs[side].first = count == 0 ? last : last - count + 1;
    }
    return joined;
}

std::vector<DifferenceRecord> Hunks(const std::vector<DifferenceRecord>& records) {
    std::vector<DifferenceRecord> hunks;
    for (const DifferenceRecord& record : records) {
        if (!hunks.empty() && Touch(hunks.back(), record))
            hunks.back() = Joined(hunks.back(), record);
        else
            hunks.push_back(record);
    }
    return hunks;
}

void PrintHunk(const DifferenceRecord& hunk) {
    PrintRange(hunk.paragraphs.original.first.value, hunk.paragraphs.original.last.value);
    std::printf("%c", static_cast<char>(hunk.type));
    PrintRange(hunk.paragraphs.modified.first.value, hunk.paragraphs.modified.last.value);
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
    const std::vector<DifferenceRecord> hunks = Hunks(engine.Records());
    if (quiet)
        std::printf("%zu\n", hunks.size());
    for (const DifferenceRecord& hunk : hunks) {
        if (!quiet)
            PrintHunk(hunk);
    }
    return engine.getDifferenceCount() == 0 ? 0 : 1;
}
