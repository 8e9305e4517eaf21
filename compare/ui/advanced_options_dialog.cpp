#include "compare/ui/advanced_options_dialog.h"

#include "common/expression_faults.h"
#include "common/ui/check_boxes.h"
#include "common/ui/combo_boxes.h"
#include "common/ui/measures.h"
#include "compare/engine/line_filter.h"
#include "compare/ui/type_dialogs.h"

namespace zorvane {

namespace {

constexpr int kMostLines = 1'000'000;
constexpr int kMostSeconds = 20;  // further than it grows by itself

}  // namespace

AdvancedOptionsDialog::AdvancedOptionsDialog(const clsCompareFileOptions& options,
                                             const UiText& text, QWidget* parent)
    : Dialog(text("Advanced Options"), measures::kFormDialog, parent),
      options_(options),
      text_(text) {
    FormColumn* column = AddColumn();
    AddExpression(*column, text);
    AddSearch(*column, text);
    AddLoading(*column, text);
    SetButtons(text("Done"), text("Cancel"));
    SetFirstFocus(expression_);
    ties_.Show();
}

void AdvancedOptionsDialog::AddExpression(FormColumn& column, const UiText& text) {
    expression_ = new QLineEdit(&column);
    expression_->setObjectName(QStringLiteral("expression"));
    column.AddAbove(text("Ignore regular expression"), expression_);
    ties_.Tie(*expression_, options_.sIgnoreRegularExpression);
    column.AddHint(text("Several stand behind each other with @@ between them"));
    AddTiedBox(column, ties_, text("Ignore for both paragraph and word level comparisons."),
               options_.bIgnoreRegExOnBothPasses);
}

void AdvancedOptionsDialog::AddSearch(FormColumn& column, const UiText& text) {
    column.AddHeading(text("Looking for differences"));
    AddTiedBox(column, ties_, text("Show Changes In Larger Sections"),
               options_.bShowChangesInLargerSections);
    AddTiedBox(column, ties_,
               text("Compare Faster (very large files with many small changes in random places)"),
               options_.bCompareFaster);
    auto* bracket = AddTiedBox(column, ties_, text("Use Line Bracket"), options_.bUseLineBracket);
    bracket->setObjectName(QStringLiteral("bracket"));
    auto* lines = new NumberBox(1, kMostLines, &column);
    lines->setObjectName(QStringLiteral("lines"));
    column.AddBeside(text("Number of lines before and after to consider while comparing"), lines);
    ties_.Tie(*lines, options_.lLineBracket);
    ties_.changed = [this, lines] { lines->setEnabled(options_.bUseLineBracket.Data()); };
}

void AdvancedOptionsDialog::AddLoading(FormColumn& column, const UiText& text) {
    column.AddHeading(text("When files are loaded"));
    AddTiedBox(column, ties_, text("Optimize File Loading"), options_.bOptimizeFileLoading);
    AddTiedBox(column, ties_, text("Optimize Table and List Handling"),
               options_.bModifyOriginalDocuments);
    column.AddHint(text("Where a file makes trouble, take both of these checks away."));
    auto* delay = new NumberBox(0, kMostSeconds, &column);
    delay->setSuffix(QStringLiteral(" s"));
    column.AddBeside(text("Numbered List Delay Period"), delay);
    ties_.Tie(*delay, options_.lLoadDelay);
}

// The expression itself stands in the field.
QString AdvancedOptionsDialog::Wrong(const std::string& reason) const {
    const std::size_t at = reason.rfind(kUnusable);
    const std::string fault =
        at == std::string::npos ? reason : reason.substr(at + kUnusable.size());
    const auto translate = [this](std::string_view english) { return FromQt(text_(english)); };
    return text_("This expression cannot be used: %1").arg(ToQt(ExpressionFault(fault, translate)));
}

bool AdvancedOptionsDialog::Check() {
    ties_.Take();
    LineFilter filter;
    const Status usable =
        filter.Set({.use_expressions = true}, options_.sIgnoreRegularExpression.Data());
    if (!usable.ok())
        ShowError(expression_, Wrong(usable.failure().reason));
    return usable.ok();
}

}  // namespace zorvane
