#include "tools/viewer_driver/scripted_windows.h"

#include <utility>

#include "common/base/parse_number.h"
#include "compare/print/pdf_painter.h"

namespace zorvane {

std::string Answers::Next() {
    if (waiting.empty())
        return "no";
    std::string next = std::move(waiting.front());
    waiting.pop_front();
    if (next != "stop" && next != "close" && next != "close-frame")
        return next;
    if (act)
        act(next);
    return "no";
}

bool ScriptedWindow::AskYesNo(const std::string& text, const std::string&) {
    questions.push_back(text);
    return answers_.NextIsYes();
}

void ScriptedWindow::ShowMessage(const std::string& text, const std::string&) {
    messages.push_back(text);
}

std::string ScriptedWindow::BrowseFor(Side side) {
    questions.push_back(side == Side::Original ? "Original?" : "Modified?");
    const std::string answer = answers_.Next();
    return answer == "no" ? std::string() : answer;
}

bool ScriptedWindow::ShowNotice(const std::string& text, const std::string&) {
    questions.push_back(text);
    return answers_.NextIsYes();
}

void ScriptedWindow::ShowFilter(ViewFilter shown) {
    filter = shown;
    if (on_filter)
        on_filter(shown);
}

bool ScriptedWindow::ConfirmClose() {
    if (!asks_before_close)
        return true;
    questions.push_back("Close?");
    return answers_.NextIsYes();
}

std::int32_t ScriptedWindow::AskDifferenceNumber(std::int32_t, std::int32_t) {
    questions.push_back("Number?");
    return ReadNumber<std::int32_t>(answers_.Next()).value.value_or(-1);
}

std::int32_t ScriptedWindow::Choose(const WindowQuestion& question) {
    questions.push_back(question.text);
    const std::string answer = answers_.Next();
    if (answer == "yes")
        return 0;
    const std::int32_t number = ReadNumber<std::int32_t>(answer).value.value_or(question.safe);
    return number >= 0 && number < static_cast<std::int32_t>(question.answers.size())
               ? number
               : question.safe;
}

std::string ScriptedWindow::PickFile(FileQuestion& question) {
    question.filter_index = picked_type;
    return std::exchange(picked_file, {});
}

std::unique_ptr<PagePainter> ScriptedWindow::PickPrinter(PrintQuestion& question) {
    const std::string file = std::exchange(printed_file, {});
    if (file.empty())
        return nullptr;
    question.range = print_selection ? PrintRange::Selection : PrintRange::Whole;
    Result<PdfPainter> pages = PdfPainter::Begin(file, question.title);
    if (!pages.ok()) {
        messages.push_back(pages.failure().reason);
        return nullptr;
    }
    return std::make_unique<PdfPainter>(std::move(pages).value());
}

}  // namespace zorvane
