// Two short documents, compared, and a model of the result for the writers of reports.
#pragma once

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "compare/engine/compare_texts.h"
#include "compare/engine/report_model.h"

namespace zorvane {

using TextLines = std::vector<std::string>;

class ComparedPair {
  public:
    ComparedPair(const TextLines& original, const TextLines& modified,
                 const CompareOptions& options = {})
        : texts_{LineFile(original), LineFile(modified)} {
        Result<Comparison> result =
            CompareLineFiles({std::string_view(texts_.original), std::string_view(texts_.modified)},
                             options, nullptr);
        EXPECT_TRUE(result.ok());
        comparison_ = std::move(result).value();
    }
    ComparedPair(const ComparedPair&) = delete;  // the comparison borrows the texts
    ComparedPair& operator=(const ComparedPair&) = delete;

    const Comparison& comparison() const { return comparison_; }
    ReportModel Model() const {
        return {.comparison = comparison_, .names = {"old.txt", "new.txt"}, .high_detail = true};
    }

  private:
    static std::string LineFile(const TextLines& paragraphs) {
        std::string text;
        for (const std::string& paragraph : paragraphs)
            text += paragraph + "\r\n";
        return text;
    }

    PerSide<std::string> texts_;
    Comparison comparison_;
};

/// A few words of a small language, so that pairs share much.
inline std::string RandomParagraph(std::mt19937& random) {
    static constexpr const char* kWords[] = {"a",  "the", "rent", "is", "<b>", "&amp;", "\"q\"",
                                             "\t", "tür", "文字", "😀",  "😁",   "3",     ""};
    std::string text;
    const unsigned count = static_cast<unsigned>(random()) % 9;
    for (unsigned i = 0; i < count; ++i)
        text += (i == 0 ? "" : " ") + std::string(kWords[random() % std::size(kWords)]);
    return text;
}

inline TextLines RandomParagraphs(std::mt19937& random, std::size_t count) {
    TextLines paragraphs;
    for (std::size_t i = 0; i < count; ++i)
        paragraphs.push_back(RandomParagraph(random));
    return paragraphs;
}

/// Words and whole paragraphs changed, added and left out.
inline TextLines EditedParagraphs(std::mt19937& random, const TextLines& paragraphs) {
    TextLines out;
    for (const std::string& paragraph : paragraphs) {
        const unsigned kind = static_cast<unsigned>(random()) % 10;
        if (kind == 0)
            continue;
        if (kind == 1)
            out.push_back(RandomParagraph(random));
        const std::size_t blank = paragraph.find(' ');
        if (kind == 2 && blank != std::string::npos)
            out.push_back(paragraph.substr(0, blank) + " new" + paragraph.substr(blank));
        else
            out.push_back(kind == 3 ? paragraph + " end" : paragraph);
    }
    return out;
}

}  // namespace zorvane
