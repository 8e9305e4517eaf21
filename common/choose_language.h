// The choice of the program's language by its user.
#pragma once

#include <string>
#include <vector>

namespace zorvane {

struct ProcessState;

/// What a dialog offers.
struct LanguageList {
    std::vector<std::string> languages;  ///< "English" first, then by name
    std::size_t selected = 0;
    /// Whether the selected one has a file to edit; English has none.
    bool OffersEdit() const { return selected != 0; }
    friend bool operator==(const LanguageList&, const LanguageList&) = default;
};

/// English and each language that has a file in the user's folder; the one in force is selected.
LanguageList FillLanguageList(const ProcessState& process);

/// An empty language: the user cancelled. An empty font: none was picked.
struct LanguageChoice {
    std::string language;
    std::string font;
};

/// What the choice needs of a window.
class LanguageQuestions {
  public:
    virtual ~LanguageQuestions() = default;
    /// Shows the dialog and waits for its end; `font` is where the font dialog starts.
    virtual LanguageChoice AskLanguage(const LanguageList& offered, const std::string& font) = 0;
    /// With the information icon.
    virtual void ShowInformation(const std::string& text, const std::string& caption) = 0;
};

/// Asks the user and stores the choice; true if there is another language or font than before. A
/// change takes effect at the next start, which `bNotifyUser` says to tell the user; without it,
/// and where the language is the same, the choice is in force at once. `bNotifyUser` becomes false
/// where the language is the same. A command-line run is in English and asks nobody.
bool ChooseLanguage(ProcessState& process, LanguageQuestions& questions, bool& bNotifyUser);

/// Opens the file of `language` in the desktop's text editor; English has none.
void EditLanguageFile(ProcessState& process, const std::string& language);

}  // namespace zorvane
