// What a reader of documents finds beside the text, as lines: "links 2 http://x".
#pragma once

#include <string>

#include "tests/support/shown_document.h"

namespace zorvane {

/// `read` takes a sink and a monitor. Each item without its digest.
template <class Read>
std::vector<BesideItem> BesideItemsOf(Read&& read) {
    const auto sink = MakeRtfSink();
    SilentMonitor monitor;
    const ReadEnd end = read(*sink, monitor);
    EXPECT_TRUE(end.ok()) << end.detail;
    std::vector<BesideItem> items;
    ReadRtf(sink->Finish(), items);
    return items;
}

inline std::string ShownItems(const std::vector<BesideItem>& items) {
    std::string text;
    for (const BesideItem& item : items)
        text += std::string(NameOf(item.kind).option) + " " + std::to_string(item.paragraph) + " " +
                item.text + "; ";
    return text;
}

}  // namespace zorvane
