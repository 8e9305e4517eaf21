// The sections of one small editor by number.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "common/base/number.h"
#include "compare/document/api_highlight.h"
#include "compare/document/editor.h"

namespace zorvane {

/// Finds and edits sections. The places are indexed once; edits go from the last section to the
/// first, so what lies in front of an edit stays where it was counted.
class Sections {
  public:
    explicit Sections(Editor& editor) : editor_(editor) {}

    /// Counts the sections of the editor's text as it is now.
    void Index();
    /// From the first character of one to the end of another; 0 is the place before the first. A
    /// number behind the last gives the end of the text.
    TextRange RangeOf(SectionNumber first, SectionNumber last) const;
    void ColorizeSections(SectionNumber first, SectionNumber last, const MarkStyle& mark);
    /// The plain text, with the blank in front if there is one.
    std::u16string GetSectionsText(SectionNumber first, SectionNumber last) const;
    /// The rich text with the separator in front of the first section; what `ReplaceSectionsRTF`
    /// replaces.
    RichText GetSectionsRTF(SectionNumber first, SectionNumber last) const;
    void ReplaceSectionsRTF(SectionNumber first, SectionNumber last, const RichText& text);
    void InsertTextAfterSection(SectionNumber number, const std::u16string& text,
                                const MarkStyle& mark);

  private:
    TextRange RangeWithSeparator(SectionNumber first, SectionNumber last) const;
    CharPos BeginOf(SectionNumber number) const;
    CharPos EndOf(SectionNumber number) const;

    Editor& editor_;
    std::vector<std::int32_t> ends_;
};

}  // namespace zorvane
