// How PDF documents become text.
#include <QHBoxLayout>

#include "common/ui/cards.h"
#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"
#include "compare/ui/type_dialogs.h"
#include "options/pdf_controls.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kMostPages = 99'999;
constexpr int kMostShadow = 10;
constexpr int kQuickRoad = 1;

using Settings = CompareFilesSettings;
struct TextRow {
    const char* caption;
    bool Settings::*value;
};
constexpr TextRow kTextRows[] = {
    {"&Merge Paragraph", &Settings::bBCLMergeParagraph},
    {"Connect Hyphens", &Settings::bConnectHyphens},
    {"Remove Hidden Text (i.e. white font on white background)", &Settings::bRemoveHiddenText},
    {"&Detect Header", &Settings::bBCLDetectHeader},
    {"Shrin&k Fonts", &Settings::bBCLShrinkFonts},
    {"&Adjust Font Names", &Settings::bBCLAdjustFontNames},
    {"Extract &Hyperlinks", &Settings::bBCLExtractHyperlinks},
};

// What the dialog shows of the settings, and nothing else, as it comes.
void SetDefaults(Settings& settings) {
    const Settings fresh;
    for (const TextRow& row : kTextRows)
        settings.*row.value = fresh.*row.value;
    settings.bDoQuickTextExtraction = fresh.bDoQuickTextExtraction;
    settings.lBCLConversionMethod = fresh.lBCLConversionMethod;
    settings.lBCLDocumentType = fresh.lBCLDocumentType;
    settings.lDupMaxDeltaX = fresh.lDupMaxDeltaX;
    settings.bBCLUsingPageRange = fresh.bBCLUsingPageRange;
    settings.bBCLLockPageRange = fresh.bBCLLockPageRange;
    settings.lBCLPageFrom = fresh.lBCLPageFrom;
    settings.lBCLPageTo = fresh.lBCLPageTo;
    settings.lBCLPageFromModified = fresh.lBCLPageFromModified;
    settings.lBCLPageToModified = fresh.lBCLPageToModified;
    settings.sBCLPasswordUser.clear();
    settings.sBCLPasswordOwner.clear();
    settings.keeps_pdf_passwords = fresh.keeps_pdf_passwords;
}

}  // namespace

PdfOptionsDialog::PdfOptionsDialog(const CompareFilesSettings& settings, UiText text,
                                   QWidget* parent)
    : Dialog(text("PDF Comparison Options"), kWideDialog, parent),
      settings_(settings),
      stored_(settings),
      road_(settings.bDoQuickTextExtraction ? kQuickRoad : 0),
      text_(std::move(text)) {
    QButtonGroup* roads = AddExtraction(*AddColumn());
    FormColumn* right = AddColumn();
    AddText(*right);
    AddQuick(*right);
    StartRow(Parted::ByLine);
    AddPages(*AddColumn());
    AddPasswords(*AddColumn());
    SetButtons(text_("Apply"), text_("Cancel"));
    Button* defaults = AddThirdButton(text_("Restore Defaults"));
    connect(defaults, &QPushButton::clicked, this, [this] {
        SetDefaults(settings_);
        road_ = settings_.bDoQuickTextExtraction ? kQuickRoad : 0;
        ties_.Show();
    });
    ties_.changed = [this] { UpdateGUI(); };
    ties_.Show();
    SetFirstFocus(roads->checkedButton());
}

QButtonGroup* PdfOptionsDialog::AddChoice(
    FormColumn& column, const char* heading,
    std::initializer_list<std::pair<int, const char*>> choices, std::int32_t& value) {
    column.AddHeading(text_(heading));
    auto* group = new QButtonGroup(this);
    for (const auto& [id, caption] : choices) {
        auto* button = new WrappingRadioButton(text_(caption), &column);
        column.AddWidget(button);
        group->addButton(button, id);
    }
    ties_.Tie(*group, value);
    return group;
}

QButtonGroup* PdfOptionsDialog::AddExtraction(FormColumn& column) {
    QButtonGroup* roads =
        AddChoice(column, "Extraction",
                  {{kQuickRoad, "Do Quick Text Extraction"},
                   {0, "Do Robust Text Extraction (Slower but retains formatting)"}},
                  road_);
    for (QAbstractButton* button :
         AddChoice(column, "Robust Options",
                   {{3, "Text Flow (Best for most documents)"},
                    {1, "Preserve Layout Using Spaces and Tabs"},
                    {0, "PDF is an OCR'd scanned image with textual content"}},
                   settings_.lBCLConversionMethod)
             ->buttons())
        robust_.push_back(button);
    for (QAbstractButton* button :
         AddChoice(column, "Document",
                   {{1, "Single Column"}, {2, "Multiple Columns"}, {3, "Pleading"}},
                   settings_.lBCLDocumentType)
             ->buttons())
        layout_.push_back(button);
    return roads;
}

void PdfOptionsDialog::AddText(FormColumn& column) {
    column.AddHeading(text_("Text"));
    for (const TextRow& row : kTextRows) {
        WrappingCheckBox* box = AddTiedBox(column, ties_, text_(row.caption), settings_.*row.value);
        if (row.value == &Settings::bBCLDetectHeader)
            detect_header_ = box;
        else
            layout_.push_back(box);
    }
}

void PdfOptionsDialog::AddQuick(FormColumn& column) {
    column.AddHeading(text_("Quick Options"));
    auto* shadow = new ComboBox(&column);
    for (int tenths = 0; tenths <= kMostShadow; ++tenths)
        shadow->addItem(QString::number(tenths));
    shadow->setMinimumContentsLength(3);
    shadow->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    const QString advice = text_(
        "Are characters showing up in duplicates, when only one is in the PDF?  Try increasing "
        "this value one at a time.  This setting is required since some PDF's create a drop "
        "shadow by putting two of the same characters on top of one another with a slight "
        "offset.");
    QLabel* caption = column.AddBeside(text_("Drop-shadow tolerance"), shadow);
    // As rich text a tool tip wraps.
    const QString tip = QStringLiteral("<p>%1</p>").arg(advice.toHtmlEscaped());
    for (QWidget* part : {static_cast<QWidget*>(caption), static_cast<QWidget*>(shadow)}) {
        part->setToolTip(tip);
        part->setWhatsThis(advice);
    }
    shadow->setAccessibleDescription(advice);
    ties_.Tie(*shadow, settings_.lDupMaxDeltaX);
    quick_.push_back(shadow);
}

QWidget* PdfOptionsDialog::MakeRange(std::int32_t& from, std::int32_t& to, const char* words) {
    auto* range = new QWidget(this);
    auto* row = new QHBoxLayout(range);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kSmall);
    range->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    for (std::int32_t* page : {&from, &to}) {
        auto* box = new OptionalNumberBox(kMostPages, range);
        const char* end = page == &from ? "first page" : "last page";
        box->setAccessibleName(QStringLiteral("%1, %2").arg(text_(words), text_(end)));
        if (page == &to) {
            auto* between = new QLabel(text_("to page"), range);
            between->setProperty(look::kProperty, QString::fromLatin1(look::kBeside));
            row->addWidget(between);
        }
        row->addWidget(box);
        ties_.Tie(*box, *page);
        pages_.push_back(box);
    }
    return range;
}

void PdfOptionsDialog::AddPages(FormColumn& column) {
    AddTiedBox(column, ties_, text_("&Specify Pages to compare"), settings_.bBCLUsingPageRange);
    ranges_.original = MakeRange(settings_.lBCLPageFrom, settings_.lBCLPageTo, "Original");
    column.AddBeside(text_("Original"), ranges_.original);
    ranges_.modified =
        MakeRange(settings_.lBCLPageFromModified, settings_.lBCLPageToModified, "Modified");
    column.AddBeside(text_("Modified"), ranges_.modified);
    tied_ =
        AddTiedBox(column, ties_, text_("Same pages in both files"), settings_.bBCLLockPageRange);
}

void PdfOptionsDialog::AddPasswords(FormColumn& column) {
    column.AddHeading(text_("Passwords, for both files"));
    const std::pair<const char*, std::string*> kRows[] = {
        {"User Password", &settings_.sBCLPasswordUser},
        {"Owner Password", &settings_.sBCLPasswordOwner}};
    for (const auto& [caption, value] : kRows) {
        QLineEdit* line = MakePasswordLine(&column);
        line->setObjectName(QString::fromLatin1(caption));
        column.AddBeside(text_(caption), line);
        ties_.Tie(*line, *value);
    }
    AddTiedBox(column, ties_, text_("Keep these passwords in the settings"),
               settings_.keeps_pdf_passwords);
}

void PdfOptionsDialog::UpdateGUI() {
    settings_.bDoQuickTextExtraction = road_ == kQuickRoad;
    const PdfControls controls = PdfControlsOf(settings_);
    const auto enable = [](const std::vector<QWidget*>& parts, bool on) {
        for (QWidget* part : parts)
            part->setEnabled(on);
    };
    enable(robust_, controls.robust);
    enable(layout_, controls.layout);
    enable(quick_, controls.quick);
    detect_header_->setEnabled(controls.detect_header);
    ranges_.original->setEnabled(controls.pages);
    ranges_.modified->setEnabled(controls.modified_pages);
    tied_->setEnabled(controls.pages);
    if (!settings_.bBCLLockPageRange)
        return;
    TiePages(settings_);
    for (std::size_t at = 0; at < 2; ++at) {
        const QSignalBlocker silent(pages_[at + 2]);
        pages_[at + 2]->setValue(pages_[at]->value());
    }
}

bool PdfOptionsDialog::Check() {
    ties_.Take();
    settings_.bDoQuickTextExtraction = road_ == kQuickRoad;
    if (!settings_.bBCLUsingPageRange) {
        settings_.lBCLPageFrom = stored_.lBCLPageFrom;
        settings_.lBCLPageTo = stored_.lBCLPageTo;
        settings_.lBCLPageFromModified = stored_.lBCLPageFromModified;
        settings_.lBCLPageToModified = stored_.lBCLPageToModified;
        return true;
    }
    // Pages that follow the other file's are right where those are.
    for (OptionalNumberBox* page : pages_) {
        if (!page->IsEmpty())
            continue;
        page->setValue(1);
        ShowError(page, text_("Please enter a page number"));
        page->selectAll();
        return false;
    }
    return true;
}

}  // namespace zorvane
