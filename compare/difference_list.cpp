#include "compare/difference_list.h"

#include <algorithm>

#include "common/base/text_encoding.h"
#include "compare/record_walker.h"

namespace zorvane {
namespace {

constexpr std::int32_t kExcerptLength = 100;

std::string Excerpt(clsRTBDocument& document, ParagraphNumber number) {
    TextRange range = document.RangeOf(number, number, LastBreak::LeaveOut);
    range.length = std::min(range.length, kExcerptLength);
    return "\"" + ToUtf8(document.RichTB().Text(range)) + "\"";
}

class ListMarker : public RecordMarker {
  public:
    explicit ListMarker(PassContext& context) : context_(context) {}
    void Addition(RecordIndex index, const DifferenceRecord& record) override {
        Add(index, record);
    }
    void Deletion(RecordIndex index, const DifferenceRecord& record) override {
        Add(index, record);
    }
    void Change(RecordIndex index, const DifferenceRecord& record) override { Add(index, record); }
    RunStep Step() const override { return RunStep::List; }
    std::vector<std::string> Take() {
        std::reverse(lines_.begin(), lines_.end());  // undoes the backward walk
        return std::move(lines_);
    }

  private:
    void Add(RecordIndex index, const DifferenceRecord& record) {
        lines_.push_back(DifferenceListLine(context_, index, record));
    }

    PassContext& context_;
    std::vector<std::string> lines_;
};

}  // namespace

std::string DifferenceListLine(PassContext& context, RecordIndex index,
                               const DifferenceRecord& record) {
    RunMonitor& monitor = context.monitor;
    const std::int32_t lines = std::max(record.OriginalCount(), record.ModifiedCount());
    const std::string count = std::to_string(lines);
    const std::string place = std::to_string(record.first_original);
    std::string text = "[" + std::to_string(index.value + 1) + "] ";
    if (record.type == DifferenceType::Change) {
        text += count + " " +
                monitor.Translate(lines == 1 ? "change at paragraph" : "changes at paragraph") +
                " (" + place + ") :";
    } else {
        const bool addition = record.type == DifferenceType::Addition;
        text += monitor.Translate(addition ? "Addition of" : "Deletion of") + " " + count +
                monitor.Translate(lines == 1 ? " line at paragraph (" : " lines at paragraph (") +
                place + ") : ";
    }
    const bool modified_side = record.type == DifferenceType::Addition;
    return text + (modified_side ? Excerpt(context.editors.rtbModified.document,
                                           ParagraphNumber{record.first_modified})
                                 : Excerpt(context.editors.rtbOriginal.document,
                                           ParagraphNumber{record.first_original}));
}

std::vector<std::string> DifferenceListLines(PassContext& context) {
    ListMarker marker(context);
    WalkRecords(context.comparison, marker, context.monitor);
    return marker.Take();
}

std::string DifferenceStatus(ProcessState& process, RecordIndex index,
                             const DifferenceRecord& record) {
    const std::string number = "[" + std::to_string(index.value + 1) + "] ";
    const std::string place = ": " + std::to_string(record.first_original);
    if (record.type == DifferenceType::Change)
        return number + process.Translate("Change at paragraph") + place;
    const bool addition = record.type == DifferenceType::Addition;
    const std::int32_t lines = std::max(record.OriginalCount(), record.ModifiedCount());
    return number + process.Translate(addition ? "Addition of" : "Deletion of") + " " +
           std::to_string(lines) + " " +
           process.Translate(lines == 1 ? "line at paragraph" : "lines at paragraph") + place;
}

NavigationButtons NavigationFor(std::int32_t current, std::int32_t count) {
    if (count <= 1)
        return {};
    const bool at_first = current <= 1;
    const bool at_last = current >= count;
    return {!at_first, !at_first, !at_last, !at_last, true};
}

}  // namespace zorvane
