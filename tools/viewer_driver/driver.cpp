#include "tools/viewer_driver/driver.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace zorvane {

Driver::Driver(std::string folder, std::string here, std::ostream& out)
    : folder_(std::move(folder)),
      here_(std::move(here)),
      out_(out),
      platform_(MakeDriverPlatform(folder_)) {
    answers_.act = [this](const std::string& act) { Act(act); };
    answers_.during_a_run = [this] {
        if (during_.empty())
            return;
        const Status done = Do(std::exchange(during_, {}));
        if (!done.ok())
            inside_ = done.failure();
    };
    session_ = std::make_unique<DriverSession>(platform_, answers_);
}

Driver::~Driver() = default;

constexpr Driver::Command Driver::kCommands[] = {
    // files
    {"write", 2, &Driver::Write},
    {"write-long", 3, &Driver::WriteLong},
    {"remove", 1, &Driver::Remove},
    {"exists", 2, &Driver::Exists},
    {"holds", 2, &Driver::Holds},
    // the frame
    {"new", 0, &Driver::New},
    {"viewer", 1, &Driver::ViewerNumber},
    {"close", 0, &Driver::Close},
    {"close-frame", 0, &Driver::CloseFrame},
    {"restore", 0, &Driver::Restore},
    {"line", 1, &Driver::Automate},
    {"release", 0, &Driver::Release},
    {"answer", 1, &Driver::Answer},
    {"ask-before-close", 1, &Driver::AskBeforeClose},
    {"during", 1, &Driver::During},
    {"language", 1, &Driver::Language},
    // runs
    {"open", 2, &Driver::Open},
    {"refresh", 0, &Driver::Refresh},
    {"compare", 0, &Driver::Compare},
    {"wait", 0, &Driver::Wait},
    {"wait-for", 1, &Driver::WaitFor},
    {"poll", 1, &Driver::PollTimes},
    {"stop", 0, &Driver::Stop},
    {"stop-after", 1, &Driver::StopAfter},
    {"stop-randomly", 1, &Driver::StopRandomly},
    {"view", 0, &Driver::View},
    {"filter", 1, &Driver::Filter},
    {"report", 0, &Driver::Report},
    {"option", 1, &Driver::Option},
    {"setting", 1, &Driver::Setting},
    // differences and editors
    {"next", 0, &Driver::Next},
    {"previous", 0, &Driver::Previous},
    {"first", 0, &Driver::First},
    {"last", 0, &Driver::Last},
    {"goto", 1, &Driver::GoTo},
    {"pick", 1, &Driver::Pick},
    {"select", 3, &Driver::Select},
    {"type", 1, &Driver::Type},
    {"delete", 0, &Driver::Delete},
    {"undo", 0, &Driver::Undo},
    {"redo", 0, &Driver::Redo},
    {"caret", 1, &Driver::Caret},
    {"find", 1, &Driver::Find},
    {"find-next", 0, &Driver::FindNext},
    {"replace", 2, &Driver::Replace},
    {"replace-all", 2, &Driver::ReplaceAll},
    {"compare-selected", 0, &Driver::CompareSelected},
    {"next-line", 0, &Driver::Line},
    {"save", 3, &Driver::Save},
    {"print", 2, &Driver::Print},
    {"check-files", 0, &Driver::CheckFiles},
    // what is so
    {"state", 0, &Driver::State},
    {"expect", 1, &Driver::Expect},
    {"remember", 0, &Driver::Remember},
    {"same", 1, &Driver::Same},
    {"changed", 1, &Driver::Changed},
    {"echo", 0, &Driver::Echo},
};

Status Driver::Do(const std::string& line) {
    const std::optional<ScriptLine> read = ReadScriptLine(Filled(line));
    if (!read)
        return Failure{"a quote is not closed"};
    if (read->command.empty())
        return Status::Ok();
    const auto found = std::find_if(std::begin(kCommands), std::end(kCommands),
                                    [&](const Command& row) { return read->command == row.name; });
    if (found == std::end(kCommands))
        return Failure{"there is no command \"" + read->command + "\""};
    // A line of another language is handed on as it stands.
    const bool whole = read->command == "line" || read->command == "during";
    const Words words = whole && !read->rest.empty() ? Words{read->rest} : read->words;
    if (words.size() < found->least)
        return Failure{read->command + " wants more words"};
    Status done = Carried(*found, words);
    if (done.ok() && inside_)
        return *std::exchange(inside_, std::nullopt);
    return done;
}

Status Driver::Carried(const Command& command, const Words& words) {
    try {
        return (this->*command.run)(words);
    } catch (const std::logic_error&) {  // of std::stoi
        return Failure{"a number is wanted"};
    }
}

std::string Driver::Filled(std::string text) const {
    std::string backward = folder_;  // as command lines have it, where "/" begins a switch
    std::replace(backward.begin(), backward.end(), '/', '\\');
    for (const auto& [name, value] : {std::pair<std::string, std::string>{"$folder", folder_},
                                      std::pair<std::string, std::string>{"$back", backward},
                                      std::pair<std::string, std::string>{"$here", here_}}) {
        for (std::size_t at = text.find(name); at != std::string::npos;
             at = text.find(name, at + value.size()))
            text.replace(at, name.size(), value);
    }
    return text;
}

std::string Driver::Path(const std::string& name) const {
    return name.empty() || name.front() == '/' ? name : folder_ + "/" + name;
}

Result<frmCompareFiles*> Driver::Viewer() const {
    frmCompareFiles* current = session_->Current();
    if (current == nullptr)
        return Failure{"no viewer is open"};
    return current;
}

Result<RichDocument*> Driver::EditorOf(const std::string& name) const {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (!viewer.ok())
        return viewer.failure();
    RichDocument* editor = EditorNamed(*viewer.value(), name);
    if (editor == nullptr)
        return Failure{"there is no editor \"" + name + "\""};
    return editor;
}

}  // namespace zorvane
