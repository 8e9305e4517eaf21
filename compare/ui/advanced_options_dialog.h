// The compare options that few documents need.
#pragma once

#include "common/ui/dialog.h"
#include "compare/ui/field_ties.h"
#include "options/compare_file_options.h"

namespace zorvane {

class AdvancedOptionsDialog : public Dialog {
  public:
    AdvancedOptionsDialog(const clsCompareFileOptions& options, const UiText& text,
                          QWidget* parent);
    const clsCompareFileOptions& Options() const { return options_; }

  protected:
    bool Check() override;

  private:
    void AddExpression(FormColumn& column, const UiText& text);
    void AddSearch(FormColumn& column, const UiText& text);
    void AddLoading(FormColumn& column, const UiText& text);
    QString Wrong(const std::string& reason) const;

    clsCompareFileOptions options_;
    FieldTies ties_;
    QLineEdit* expression_ = nullptr;
    UiText text_;
};

}  // namespace zorvane
