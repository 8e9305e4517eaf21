// What unfolds under Options in a Find window.
#pragma once

#include <QWidget>

#include "common/ui/ui_text.h"
#include "compare/ui/option_binding.h"
#include "find/find_viewer.h"

namespace zorvane {

class FindOptionsPage : public QWidget {
  public:
    FindOptionsPage(frmFindTextInFiles& viewer, const UiText& text, QWidget* parent);
    void ShowValues() { binding_.Show(); }

  private:
    OptionBinding binding_;
};

class FindReportPage : public QWidget {
  public:
    FindReportPage(frmFindTextInFiles& viewer, const UiText& text, QWidget* parent);
    void ShowValues() { binding_.Show(); }

  private:
    OptionBinding binding_;
};

}  // namespace zorvane
