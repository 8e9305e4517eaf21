// The dialogs of options that a type of file has of its own. Each edits a copy; whoever shows it
// takes the copy when it was accepted.
#pragma once

#include <functional>

#include <QCheckBox>
#include <QLineEdit>

#include "common/base/result.h"
#include "common/base/side.h"
#include "common/ui/check_boxes.h"
#include "common/ui/combo_boxes.h"
#include "common/ui/dialog.h"
#include "common/ui/list_box.h"
#include "compare/ui/field_ties.h"
#include "options/compare_file_options.h"
#include "options/compare_files_settings.h"
#include "options/text_extensions_dialog.h"

namespace zorvane {

/// A box of its caption, in a column, tied.
template <class Value>
WrappingCheckBox* AddTiedBox(FormColumn& column, FieldTies& ties, const QString& caption,
                             Value& value) {
    auto* box = new WrappingCheckBox(caption, &column);
    column.AddWidget(box);
    ties.Tie(*box, value);
    return box;
}
/// A field whose characters are not shown.
QLineEdit* MakePasswordLine(QWidget* parent);

/// Which extensions are text.
class TextOptionsDialog : public Dialog {
  public:
    TextOptionsDialog(const clsMRU& extensions, UiText text, QWidget* parent);
    const frmAdvancedOptionsTEXT& State() const { return state_; }

  protected:
    bool Check() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void AddButtons(FormColumn& column);
    void Add();
    void Delete();
    void ShowEntries();
    void UpdateGUI();

    frmAdvancedOptionsTEXT state_;
    UiText text_;
    QLineEdit* line_;
    ListBox* list_;
    Button* add_ = nullptr;
    Button* delete_ = nullptr;
};

class WordOptionsDialog : public Dialog {
  public:
    WordOptionsDialog(const clsCompareFileOptions& options, const UiText& text, QWidget* parent);
    const clsCompareFileOptions& Options() const { return options_; }

  protected:
    bool Check() override;

  private:
    clsCompareFileOptions options_;
    FieldTies ties_;
};

class PdfOptionsDialog : public Dialog {
  public:
    PdfOptionsDialog(const CompareFilesSettings& settings, UiText text, QWidget* parent);
    const CompareFilesSettings& Settings() const { return settings_; }

  protected:
    bool Check() override;

  private:
    QWidget* MakeRange(std::int32_t& from, std::int32_t& to, const char* words);
    QButtonGroup* AddExtraction(FormColumn& column);
    void AddText(FormColumn& column);
    void AddQuick(FormColumn& column);
    void AddPages(FormColumn& column);
    void AddPasswords(FormColumn& column);
    QButtonGroup* AddChoice(FormColumn& column, const char* heading,
                            std::initializer_list<std::pair<int, const char*>> choices,
                            std::int32_t& value);
    void UpdateGUI();

    CompareFilesSettings settings_;
    CompareFilesSettings stored_;  ///< as they were
    std::int32_t road_ = 0;        ///< 1: the quick one
    UiText text_;
    FieldTies ties_;
    std::vector<QWidget*> robust_;
    std::vector<QWidget*> layout_;
    std::vector<QWidget*> quick_;
    QWidget* detect_header_ = nullptr;
    PerSide<QWidget*> ranges_{nullptr, nullptr};
    QWidget* tied_ = nullptr;
    std::vector<OptionalNumberBox*> pages_;
};

/// Asks for sheets of the workbook of a side: their names, or why there are none.
using ReadSheets =
    std::function<Result<std::vector<std::string>>(Side side, const std::string& password)>;

class SheetOptionsDialog : public Dialog {
  public:
    /// `has_sheets`: the file of that side is a workbook that is there.
    SheetOptionsDialog(const clsCompareFileOptions& options, PerSide<bool> has_sheets,
                       ReadSheets read, UiText text, QWidget* parent);
    const clsCompareFileOptions& Options() const { return options_; }

  protected:
    bool Check() override;

  private:
    struct SideFields;
    void AddSide(FormColumn& column, Side side, bool has_sheets);
    void AddCrop(FormColumn& column, const char* caption, clsVarBoolean& use, clsVarString& list);
    void AddExtraction(FormColumn& column);
    void AddBetween(FormColumn& column);
    void ChooseSheets(Side side, QLineEdit& line, const QLineEdit& password);
    void UpdateGUI();

    clsCompareFileOptions options_;
    ReadSheets read_;
    UiText text_;
    FieldTies ties_;
    std::vector<std::pair<QCheckBox*, QWidget*>> depends_;
};

/// Which sheets of a workbook.
class SelectSheetDialog : public Dialog {
  public:
    SelectSheetDialog(const std::vector<std::string>& names, const UiText& text, QWidget* parent);
    /// As the options want them.
    std::string Selected() const;

  private:
    ListBox* list_;
};

class SlideOptionsDialog : public Dialog {
  public:
    SlideOptionsDialog(const CompareFilesSettings& settings, const UiText& text, QWidget* parent);
    const CompareFilesSettings& Settings() const { return settings_; }

  protected:
    bool Check() override;

  private:
    void AddSide(FormColumn& column, const UiText& text, Side side);
    void UpdateGUI();

    CompareFilesSettings settings_;
    std::int32_t all_ = 1;
    std::vector<std::pair<OptionalNumberBox*, std::int32_t CompareFilesSettings::*>> numbers_;
    FieldTies ties_;
    QWidget* only_notes_ = nullptr;
};

class HtmlOptionsDialog : public Dialog {
  public:
    HtmlOptionsDialog(const clsCompareFileOptions& options, const UiText& text, QWidget* parent);
    const clsCompareFileOptions& Options() const { return options_; }

  protected:
    bool Check() override;

  private:
    clsCompareFileOptions options_;
    FieldTies ties_;
};

}  // namespace zorvane
