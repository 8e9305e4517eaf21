// What a reader of documents finds beside the text, as lines: "links 2 http://x".
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

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

template <class Parts>
struct PartChange {
    std::string Parts::*part;
    std::string_view now;
    std::string_view sentence;  ///< empty: none
};

/// Changes one part after the other. `told` compares a document of the parts with that of `parts`.
template <class Parts, class Tell>
void CheckChanges(const Parts& parts, const Tell& told,
                  std::initializer_list<PartChange<Parts>> changes) {
    EXPECT_EQ(told(parts), "");
    for (const PartChange<Parts>& change : changes) {
        SCOPED_TRACE(change.sentence);
        Parts other = parts;
        other.*change.part = change.now;
        const std::string prefix = change.sentence.empty() ? "" : "Beside the words: ";
        EXPECT_EQ(told(other), prefix + std::string(change.sentence));
    }
}

}  // namespace zorvane
