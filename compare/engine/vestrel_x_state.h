// What one engine keeps: for the files of the engine itself and for its report writer.
#pragma once

#include <string>
#include <vector>

#include "common/platform/mapped_file.h"
#include "compare/engine/difference_search.h"
#include "compare/engine/line_file.h"
#include "compare/engine/line_filter.h"
#include "compare/engine/line_table.h"
#include "compare/engine/record_builder.h"
#include "compare/engine/vestrel_x.h"

namespace zorvane {

/// One side of a compare.
struct EngineSide {
    std::string path;
    MappedFile file;  ///< of the last `Compare`; the lines lie in it
    LineFile lines;
    std::vector<std::uint32_t> numbers;  ///< of the lines that take part, between the common ends
    std::vector<std::int32_t>
        line_of;                    ///< the line of each number; empty: counted on from the first
    std::vector<std::string> keys;  ///< filtered lines, when lines are not their own keys
};

struct VestrelX::State {
    EngineSide master;
    EngineSide source;
    bool ignore_case = false;
    bool ignore_whitespace = false;
    bool ignore_empty_lines = false;
    bool compare_faster = false;
    bool larger_sections = false;
    bool use_line_bracket = false;
    std::int32_t line_bracket = 1;
    std::string filter_expression;
    bool filter_enabled = false;

    std::string master_title;
    std::string source_title;
    std::string report_title;
    bool high_detail_summary = false;
    bool double_byte_locale = false;
    ReportLook look;
    Status report_status;

    LineFilter filter;
    LineTable table;
    DifferenceSearch search;
    std::vector<DifferenceRecord> records;

    Status Run(std::string_view master_text, std::string_view source_text);

  private:
    struct CommonEnds {
        std::int32_t front = 0;
        std::int32_t back = 0;
    };
    CommonEnds FindCommonEnds() const;
    void Number(EngineSide& side, CommonEnds ends, bool identity);
    void Slide(CommonEnds ends);
};

}  // namespace zorvane
