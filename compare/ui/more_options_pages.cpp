// The tabs of report and view.
#include <array>

#include <QHBoxLayout>

#include "common/ui/bars.h"
#include "common/ui/check_boxes.h"
#include "common/ui/combo_boxes.h"
#include "common/ui/measures.h"
#include "compare/ui/command_buttons.h"
#include "compare/ui/option_pages.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kChoiceLetters = 18;
constexpr std::int32_t kDocument = 4;  // the last type; behind it its form with tracked changes

using File = std::string CompareFilesSettings::*;
// By the numbers of `ReportType`.
constexpr std::array<File, 4> kReportFiles = {
    &CompareFilesSettings::msgReportFileHTM_MD, &CompareFilesSettings::msgReportFileTXT_MD,
    &CompareFilesSettings::msgReportFileCSV_MD, &CompareFilesSettings::msgReportFileDOC_MD};

File FileOf(const CompareFilesSettings& settings) {
    const std::int32_t type = std::clamp(settings.mlReportDefaultFileType_MD, 1, 4);
    return kReportFiles[static_cast<std::size_t>(type - 1)];
}

}  // namespace

// ---- reports ----

ReportOptionsPage::ReportOptionsPage(frmCompareFiles& viewer, CommandSet& commands, UiText text,
                                     QWidget* parent, ReportButton button)
    : QWidget(parent), viewer_(viewer), text_(std::move(text)) {
    QHBoxLayout* columns = MakeOptionColumns(this);
    columns->addWidget(MakeWhat(), 0, Qt::AlignTop);
    columns->addWidget(MakeWhere(commands, button), 1, Qt::AlignTop);
    binding_.Show();
}

FormColumn* ReportOptionsPage::MakeWhat() {
    CompareFilesSettings& settings = viewer_.Settings();
    auto* column = new FormColumn(this);
    column->AddHeading(text_("Report"));
    auto* type = new ComboBox(column);
    type->addItems({text_("HTML"), text_("Text"), text_("Comma Delimited"), text_("MS Word"),
                    text_("Tracked Changes")});
    type->setMinimumContentsLength(kChoiceLetters);
    column->AddBeside(text_("Type"), type);
    auto* style = new ComboBox(column);
    style->addItems({text_("All In One"), text_("Side By Side")});
    style->setMinimumContentsLength(kChoiceLetters);
    column->AddBeside(text_("Style"), style);
    binding_.Choice(
        type,
        [&settings] {
            const bool tracked =
                settings.mlReportDefaultFileType_MD == kDocument && settings.bReportDOC_Tracked;
            return tracked ? kDocument : settings.mlReportDefaultFileType_MD - 1;
        },
        [this, &settings](int at) {
            settings.mlReportDefaultFileType_MD = std::min(at + 1, kDocument);
            if (at + 1 >= kDocument)
                settings.bReportDOC_Tracked = at == kDocument;
            binding_.Show();
        });
    binding_.Choice(
        style, [&settings] { return settings.mlReportDefaultStyle_MD == 1 ? 0 : 1; },
        [&settings](int at) { settings.mlReportDefaultStyle_MD = at + 1; });
    // The other types have one style.
    binding_.Add(
        [style, &settings] { style->setEnabled(settings.mlReportDefaultFileType_MD == 1); });
    return column;
}

FormColumn* ReportOptionsPage::MakeWhere(CommandSet& commands, ReportButton button) {
    CompareFilesSettings& settings = viewer_.Settings();
    auto* column = new FormColumn(this);
    column->AddHeading(text_("File"));
    auto* file = new QLineEdit(column);
    file->setAccessibleName(text_("File of the report"));
    column->AddWidget(file);
    binding_.Path(
        file, [&settings] { return settings.*FileOf(settings); },
        [&settings](const std::string& path) { settings.*FileOf(settings) = path; });
    auto* row = new QWidget(column);
    auto* buttons = new QHBoxLayout(row);
    buttons->setContentsMargins(0, kMedium, 0, 0);
    buttons->setSpacing(kSmall);
    buttons->addWidget(MakeCommandButton(commands, "report.options", text_("More..."),
                                         ButtonLook::Plain, "", row));
    buttons->addStretch(1);
    if (button == ReportButton::Shown)
        buttons->addWidget(MakeCommandButton(commands, "report.make", text_("Report"),
                                             ButtonLook::Plain, "report", row));
    column->AddWidget(row);
    return column;
}

// ---- views ----

ViewOptionsPage::ViewOptionsPage(frmCompareFiles& viewer, CommandSet& commands, UiText text,
                                 QWidget* parent)
    : QWidget(parent), viewer_(viewer), text_(std::move(text)) {
    QHBoxLayout* columns = MakeOptionColumns(this);
    columns->addWidget(MakeScrolling(commands), 1, Qt::AlignTop);
    columns->addWidget(MakeText(commands), 1, Qt::AlignTop);
    columns->addWidget(MakeMargins(), 1, Qt::AlignTop);
    binding_.Show();
}

void ViewOptionsPage::AddCommandBox(FormColumn& column, CommandSet& commands, const char* id,
                                    const char* words) {
    auto* box = new WrappingCheckBox(text_(words), &column);
    LinkButton(*box, commands, id);
    column.AddWidget(box);
}

FormColumn* ViewOptionsPage::MakeScrolling(CommandSet& commands) {
    auto* column = new FormColumn(this);
    column->AddHeading(text_("Scrolling"));
    AddCommandBox(*column, commands, "view.align", "Align Paragraphs");
    AddCommandBox(*column, commands, "view.lock_vertical", "Scroll Lock Vertical");
    AddCommandBox(*column, commands, "view.lock_horizontal", "Scroll Lock Horizontal");
    return column;
}

FormColumn* ViewOptionsPage::MakeText(CommandSet& commands) {
    constexpr int kLeast = 200;
    constexpr int kMost = 4000;
    CompareFilesView& view = viewer_.Settings().view;
    auto* column = new FormColumn(this);
    column->AddHeading(text_("Text"));
    AddCommandBox(*column, commands, "view.wrap", "Word Wrap");
    auto* length = new NumberBox(kLeast, kMost, column);
    column->AddBeside(text_("Line length of all in one"), length);
    binding_.Number(
        length, [&view] { return view.LineLength; },
        [&view](int value) { view.LineLength = value; });
    column->AddWidget(MakeCommandButton(commands, "view.font", text_("Font..."), ButtonLook::Plain,
                                        "formatting", column));
    return column;
}

FormColumn* ViewOptionsPage::MakeMargins() {
    using Margin = std::string CompareFilesSettings::*;
    constexpr std::pair<const char*, Margin> kMargins[] = {
        {"Left", &CompareFilesSettings::txtLeftMargin},
        {"Right", &CompareFilesSettings::txtRightMargin},
        {"Top", &CompareFilesSettings::txtTopMargin},
        {"Bottom", &CompareFilesSettings::txtBottomMargin}};
    CompareFilesSettings& settings = viewer_.Settings();
    auto* column = new FormColumn(this);
    column->AddHeading(text_("Page margins in inches"));
    for (const auto& [words, margin] : kMargins) {
        auto* line = new QLineEdit(column);
        line->setMaximumWidth(80);
        column->AddBeside(text_(words), line);
        binding_.Text(
            line, [&settings, value = margin] { return settings.*value; },
            [&settings, value = margin](const std::string& inches) { settings.*value = inches; });
    }
    return column;
}

}  // namespace zorvane
