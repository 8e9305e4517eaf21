#include "compare/ui/report_options_dialog.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "common/ui/cards.h"
#include "common/ui/check_boxes.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

namespace {

using Settings = CompareFilesSettings;
struct PartRow {
    const char* caption;
    const char* tip;
    bool Settings::*part;
};
constexpr PartRow kParts[] = {
    {"Show Red Lined 'All In One' View",
     "Display the results of the Difference viewer in the report",
     &Settings::bReportDOC_ShowAllInOneDifferenceViewer},
    {"Show Additions Summary", "Include the Additions Summary in the report",
     &Settings::bReportDOC_Additions},
    {"Show Deletions Summary", "Include the Deletions Summary in the report",
     &Settings::bReportDOC_ShowDeletions},
    {"Show Changes Summary", "Include the Changes Summary in the report",
     &Settings::bReportDOC_ShowChanges},
};

// By the numbers that settings keep, the tab of a type of report.
int TabOf(std::int32_t type) {
    constexpr std::int32_t kHtml = 1;
    constexpr std::int32_t kText = 2;
    constexpr std::int32_t kDocument = 4;
    switch (type) {
        case kDocument:
            return 0;
        case kHtml:
            return 1;
        case kText:
            return 2;
        default:
            return 3;
    }
}

}  // namespace

ReportOptionsDialog::ReportOptionsDialog(const CompareFilesSettings& settings,
                                         const PerSide<QString>& file_names, AskPath ask,
                                         UiText text, QWidget* parent)
    : Dialog(text("Report Options"), kFormDialog, parent),
      settings_(settings),
      ask_(std::move(ask)),
      text_(std::move(text)),
      tabs_(new TabStrip(this)),
      pages_(new QStackedWidget(this)) {
    auto* head = new QWidget(this);
    auto* rows = new QVBoxLayout(head);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(tabs_, 0, Qt::AlignLeft);
    rows->addWidget(MakeHairline(head));
    AddWide(head);
    AddWide(pages_);
    MakeDocument();
    MakeHtml(file_names);
    MakePlain("Text", "TXT", settings_.msgReportFileTXT_MD);
    MakePlain("Comma Delimited", "CSV", settings_.msgReportFileCSV_MD);
    SetButtons(text_("Apply"), text_("Cancel"));
    connect(tabs_, &QTabBar::currentChanged, pages_, &QStackedWidget::setCurrentIndex);
    const int tab = TabOf(settings.mlReportDefaultFileType_MD);
    tabs_->setCurrentIndex(tab);
    SetFirstFocus(&paths_[static_cast<std::size_t>(tab)]->Line());
    ties_.Show();
}

FormColumn* ReportOptionsDialog::AddTab(const char* title) {
    auto* page = new QWidget(pages_);
    auto* rows = new QVBoxLayout(page);
    rows->setContentsMargins(0, 0, 0, 0);
    FormColumn* column = MakeColumn(page);
    rows->addWidget(column, 0, Qt::AlignTop);
    tabs_->addTab(text_(title));
    pages_->addWidget(page);
    return column;
}

void ReportOptionsDialog::AddPath(FormColumn& column, const char* caption, const char* type,
                                  std::string& path) {
    auto* field = new PathField(text_("Choose the file of the report"), &column);
    field->Line().setObjectName(QStringLiteral("path.") + QString::fromLatin1(type));
    column.AddAbove(text_(caption), field);
    field->ask = [this, type](const QString& start) {
        const QString filter =
            text_("All files") + u' ' + QString::fromLatin1(type) + QStringLiteral("|*.*");
        return ask_ ? ask_(text_("Report File"), filter, start) : QString();
    };
    ties_.TiePath(field->Line(), path);
    paths_.push_back(field);
}

void ReportOptionsDialog::MakeDocument() {
    FormColumn* column = AddTab("Document");
    AddPath(*column, "Default Report Path and Name (use *.DOC or *.RTF):", "DOC",
            settings_.msgReportFileDOC_MD);
    column->AddHint(
        text_("Hint #2: Give the file name a *.DOC extension, and it will come up in MS Word."));
    constexpr PartRow kTracked = {
        "Tracked Changes",
        "Write a document in which a word processor accepts and rejects each change (DOCX or ODT)",
        &Settings::bReportDOC_Tracked};
    const auto add = [&](const PartRow& row) {
        auto* box = new WrappingCheckBox(text_(row.caption), column);
        box->setToolTip(text_(row.tip));
        column->AddWidget(box);
        ties_.Tie(*box, settings_.*row.part);
        return box;
    };
    WrappingCheckBox* tracked = add(kTracked);
    for (const PartRow& row : kParts) {
        WrappingCheckBox* part = add(row);
        // Such a document has none of these parts.
        part->setDisabled(settings_.bReportDOC_Tracked);
        connect(tracked, &WrappingCheckBox::toggled, part, &QWidget::setDisabled);
    }
}

void ReportOptionsDialog::MakeHtml(const PerSide<QString>& file_names) {
    FormColumn* column = AddTab("HTML");
    AddPath(*column, "Default Report Path and Name:", "HTM", settings_.msgReportFileHTM_MD);
    auto* title = new QLineEdit(column);
    column->AddAbove(text_("Report Title (Blank for no title)"), title);
    ties_.Tie(*title, settings_.msgReportTitleHTM_MD);
    auto* both = new QWidget(column);
    auto* halves = new QHBoxLayout(both);
    halves->setContentsMargins(0, kMedium, 0, 0);
    halves->setSpacing(kMedium);
    const auto half = [&](const char* caption, const QString& name, std::string& value) {
        auto* room = new FormColumn(both);
        auto* line = new QLineEdit(room);
        line->setPlaceholderText(name);
        room->AddAbove(text_(caption), line);
        halves->addWidget(room, 1);
        ties_.Tie(*line, value);
    };
    half("Original Column Title", file_names.original, settings_.txtReportMasterTitleHTML);
    half("Modified Column Title", file_names.modified, settings_.txtReportSourceTitleHTML);
    column->AddWidget(both);
    column->AddHint(
        text_("Hint: Leave blank to use the file name for either the Original or Modified Column"));
    auto* style = new QButtonGroup(this);
    QList<QWidget*> choices;
    for (const auto& [id, caption] : {std::pair(1, "All In One"), std::pair(2, "Side By Side")}) {
        auto* button = new WrappingRadioButton(text_(caption), column);
        style->addButton(button, id);
        choices.append(button);
    }
    column->AddInLine(choices);
    ties_.Tie(*style, settings_.mlReportDefaultStyle_MD);
    auto* detail = new WrappingCheckBox(
        text_("Show the count of changes, additions and deletions on a sub-paragraph level."),
        column);
    column->AddWidget(detail);
    ties_.Tie(*detail, settings_.bReportHTMLShowHighDetailSummary);
}

void ReportOptionsDialog::MakePlain(const char* title, const char* type, std::string& path) {
    AddPath(*AddTab(title), "Default Report Path and Name:", type, path);
}

// A report without a name could not be written.
bool ReportOptionsDialog::Check() {
    for (std::size_t at = 0; at < paths_.size(); ++at) {
        QLineEdit& line = paths_[at]->Line();
        if (!line.text().trimmed().isEmpty())
            continue;
        tabs_->setCurrentIndex(static_cast<int>(at));
        ShowError(&line, text_("Type the path and name of the report"));
        return false;
    }
    ties_.Take();
    return true;
}

}  // namespace zorvane
