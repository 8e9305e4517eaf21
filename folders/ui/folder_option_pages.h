// What unfolds under Options in a Compare Folders window.
#pragma once

#include <functional>

#include <QWidget>

#include "common/ui/buttons.h"
#include "common/ui/check_boxes.h"
#include "common/ui/dialog.h"
#include "common/ui/path_field.h"
#include "compare/ui/option_binding.h"
#include "folders/compare_folders_viewer.h"

namespace zorvane {

class FolderOptionsPage : public QWidget {
  public:
    FolderOptionsPage(frmCompareDir& viewer, UiText text, QWidget* parent);
    /// The values, and what can be used now.
    void ShowValues();
    std::function<void()> text_options_wanted;

  private:
    FormColumn* MakeWhat();
    FormColumn* MakeListed();
    FormColumn* MakeHow();
    WrappingCheckBox* AddBox(FormColumn& column, const char* words, std::function<bool()> read,
                             std::function<void(bool)> write);
    WrappingCheckBox* AddOption(FormColumn& column, const char* words, clsVarBoolean& option);

    frmCompareDir& viewer_;
    UiText text_;
    OptionBinding binding_;
    WrappingCheckBox* texts_ = nullptr;
    Button* text_options_ = nullptr;
};

class FolderReportPage : public QWidget {
  public:
    FolderReportPage(frmCompareDir& viewer, UiText text, QWidget* parent);
    void ShowValues();
    std::function<void()> report_options_wanted;

  private:
    FormColumn* MakePairs();
    FormColumn* MakeTable();

    frmCompareDir& viewer_;
    UiText text_;
    OptionBinding binding_;
    WrappingCheckBox* create_ = nullptr;
    PathField* folder_ = nullptr;
    Button* report_options_ = nullptr;
};

}  // namespace zorvane
