#include "options/compare_file_options.h"

namespace zorvane {

clsCompareFileOptions::clsCompareFileOptions() : OptionSet("CompareFileOptions") {}

clsCompareFileOptions::clsCompareFileOptions(const clsCompareFileOptions& other)
    : clsCompareFileOptions() {
    CopyFrom(other);
}

clsCompareFileOptions::~clsCompareFileOptions() = default;

}  // namespace zorvane
