// The three tabs of options of a Compare Files window. Values take hold at once.
#pragma once

#include <QWidget>

#include "common/ui/command_table.h"
#include "common/ui/dialog.h"
#include "common/ui/mark_style_row.h"
#include "compare/compare_files_viewer.h"
#include "compare/ui/option_binding.h"

namespace zorvane {

class CompareOptionsPage : public QWidget {
  public:
    CompareOptionsPage(frmCompareFiles& viewer, CommandSet& commands, UiText text, QWidget* parent);
    OptionBinding& Binding() { return binding_; }

  private:
    void AddBox(FormColumn& column, const char* words, clsVarBoolean& option);
    FormColumn* MakeLeaveOut();
    FormColumn* MakeHow();
    FormColumn* MakeWhile();
    FormColumn* MakeLooks();

    frmCompareFiles& viewer_;
    UiText text_;
    OptionBinding binding_;
};

class ReportOptionsPage : public QWidget {
  public:
    /// `Absent`: of pairs that are compared elsewhere.
    enum class ReportButton : std::uint8_t { Shown, Absent };
    ReportOptionsPage(frmCompareFiles& viewer, CommandSet& commands, UiText text, QWidget* parent,
                      ReportButton button = ReportButton::Shown);
    OptionBinding& Binding() { return binding_; }

  private:
    FormColumn* MakeWhat();
    FormColumn* MakeWhere(CommandSet& commands, ReportButton button);

    frmCompareFiles& viewer_;
    UiText text_;
    OptionBinding binding_;
};

class ViewOptionsPage : public QWidget {
  public:
    ViewOptionsPage(frmCompareFiles& viewer, CommandSet& commands, UiText text, QWidget* parent);
    OptionBinding& Binding() { return binding_; }

  private:
    FormColumn* MakeMargins();
    FormColumn* MakeScrolling(CommandSet& commands);
    FormColumn* MakeText(CommandSet& commands);
    void AddCommandBox(FormColumn& column, CommandSet& commands, const char* id, const char* words);

    frmCompareFiles& viewer_;
    UiText text_;
    OptionBinding binding_;
};

}  // namespace zorvane
