// A window that answers what saving, printing and the disk ask, and remembers what they asked.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "compare/file_window.h"

namespace zorvane {

class FileAnswers : public FileWindow {
  public:
    std::int32_t Choose(const WindowQuestion& question) override {
        asked.push_back(question);
        if (on_question)
            on_question();
        return answer.value_or(question.safe);
    }
    std::string PickFile(FileQuestion& question) override {
        picked = question;
        question.filter_index = filter_index;
        return file;
    }
    std::unique_ptr<PagePainter> PickPrinter(PrintQuestion& question) override {
        offered = question;
        if (range)
            question.range = *range;
        if (left_margin)
            question.page.left = *left_margin;
        default_printer = "picked";
        return std::move(printer);
    }
    std::string DefaultPrinter() override { return default_printer; }
    void SetDefaultPrinter(const std::string& name) override { default_printer = name; }
    void RefreshMargins() override { ++margins; }
    void RefreshFileList(Side side) override { lists.push_back(side); }
    void RefreshCaption() override { ++captions; }

    std::vector<WindowQuestion> asked;
    std::optional<std::int32_t> answer;  ///< nothing: the safe one
    std::function<void()> on_question;
    FileQuestion picked;
    std::string file;
    std::int32_t filter_index = 1;
    PrintQuestion offered;
    std::optional<PrintRange> range;    ///< nothing: as it was offered
    std::optional<double> left_margin;  ///< nothing: as it was offered
    std::unique_ptr<PagePainter> printer;
    std::string default_printer = "home";
    std::vector<Side> lists;
    int margins = 0;
    int captions = 0;
};

}  // namespace zorvane
