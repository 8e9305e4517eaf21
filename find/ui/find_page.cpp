#include "find/ui/find_page.h"

#include <algorithm>

#include <QHeaderView>
#include <QMenu>
#include <QVBoxLayout>

#include "common/ui/look_paint.h"
#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"
#include "compare/ui/command_buttons.h"
#include "find/ui/find_commands.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kStatusPanels = 4;
constexpr int kLeastGrid = 64;
constexpr int kLeastPane = 80;
constexpr int kLeastNames = 120;
constexpr int kLeastNumber = 56;
constexpr int kLeastItem = 90;

}  // namespace

FindPage::FindPage(CommandSet& commands, Theme& theme, UiText text, FindHost host,
                   SpecialFolders& folders)
    : RecordsPage(commands, theme, std::move(text), folders), host_(std::move(host)) {}

FindPage::~FindPage() {
    ReleaseParts();
}

// What borrows the viewer goes before it.
void FindPage::ReleaseParts() {
    viewer_ = nullptr;
    ReleaseContents();
}

void FindPage::Connect(frmFindTextInFiles& viewer) {
    viewer_ = &viewer;
    MakeParts();
    ConnectParts();
    ConnectContents(FindCommands());
}

void FindPage::MakeParts() {
    QVBoxLayout* rows = MakeContents();
    boxes_ = new FindBoxes(commands_, text_, contents_);
    rows->addWidget(boxes_);
    MakeOptionArea();
    search_options_ = new FindOptionsPage(*viewer_, text_, options_);
    report_options_ = new FindReportPage(*viewer_, text_, options_);
    options_->AddPage(search_options_, text_("Search Options"));
    options_->AddPage(report_options_, text_("Report Options"));
    rows->addWidget(options_);
    MakeGrids();
    rows->addWidget(primary_, 1);
    rows->addWidget(MakeStatus(kStatusPanels));
    picker_ = new SignPicker(text_, contents_);
}

Grid* FindPage::MakeGrid(FindTable& table, const QString& name) {
    auto* grid = new Grid(name, contents_);
    grid->setModel(&table);
    grid->setItemDelegate(new FindCellDelegate(grid));
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setSelectionMode(QAbstractItemView::ExtendedSelection);
    grid->horizontalHeader()->setSectionsClickable(false);
    grid->setMinimumHeight(kLeastGrid);
    return grid;
}

void FindPage::MakeGrids() {
    primary_ = new Splitter(Qt::Vertical, text_("Results and errors"), contents_);
    secondary_ = new Splitter(Qt::Vertical, text_("Hits and the lines around one"), primary_);
    hits_ = new HitTable(*viewer_, text_, this);
    hit_grid_ = MakeGrid(*hits_, text_("Hits"));
    secondary_->addWidget(hit_grid_);
    pane_ = new HitPane(*viewer_, text_, secondary_);
    pane_->setMinimumHeight(kLeastPane);
    secondary_->addWidget(pane_);
    errors_ = new ErrorTable(*viewer_, text_, this);
    error_pane_ = new QWidget(primary_);
    auto* rows = new QVBoxLayout(error_pane_);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    passwords_ = new PasswordLine(text_, error_pane_);
    rows->addWidget(passwords_);
    error_grid_ = MakeGrid(*errors_, text_("Errors"));
    rows->addWidget(error_grid_, 1);
    primary_->addWidget(secondary_);
    primary_->addWidget(error_pane_);
    error_pane_->hide();
}

void FindPage::ConnectParts() {
    boxes_->run_wanted = [this] { Find(); };
    boxes_->switches_changed = [this] {
        viewer_->TakeSwitches();
        host_.commands_changed();
    };
    boxes_->dropped = [this](const QStringList& paths) { Drop(paths); };
    for (Splitter* splitter : {primary_, secondary_})
        connect(splitter, &QSplitter::splitterMoved, this, [this] { TakeDividers(); });
    passwords_->given = [this](const QString& password) {
        viewer_->UsePassword(FromQt(password));
        hit_grid_->setFocus();
    };
    hit_grid_->row_wanted = [this] { ShowCurrent(); };
    pane_->open_wanted = [this] { viewer_->OpenFileOf(viewer_->Shown()); };
    pane_->compare_wanted = [this] { CompareShown(); };
    picker_->picked = [this](const ExpressionSign& sign) {
        viewer_->PickSign(sign);
        host_.commands_changed();
        FocusEntry(FindError::SearchString);
    };
    picker_->closed = [this] { boxes_->SearchFor().setFocus(Qt::PopupFocusReason); };
}

QMenu* FindPage::MakeMenu() {
    QMenu* menu = BeginMenu();
    const auto act = [&](const char* words, const char* id) {
        AddCommandTo(*menu, commands_, id, text_(words));
    };
    act("Show Hit (Double Click)", "find.show");
    act("Open File", "find.open");
    menu->addSeparator();
    act(viewer_->Marked().Has(CurrentHit()) ? "Unmark Hit" : "Mark Hit", "find.mark");
    act("Compare With...", "find.compare");
    menu->addSeparator();
    act("Refresh (F5)", "compare.run");
    act("Report (F2)", "report.make");
    menu->addSeparator();
    act("Copy", "edit.copy");
    act("Change Font", "view.font");
    return menu;
}

// ---- how it looks ----

void FindPage::ShowFonts() {
    const FindSettings& settings = viewer_->Settings();
    GridFont font{settings.FontName, settings.FontSize, settings.FontBold, settings.FontItalic};
    // The one that settings begin with stands for the desktop's own.
    if (font.family == FindSettings().FontName)
        font.family.clear();
    for (Grid* grid : {hit_grid_, error_grid_})
        grid->ShowFont(font);
    number_digits_ = 0;
    SetColumns();
    pane_->ShowLook();
}

// The numbers of rows are never cut, however many there are.
void FindPage::SetColumns() {
    constexpr int kLeastDigits = 3;
    const auto digits = static_cast<int>(QString::number(hits_->rowCount()).size());
    if (number_digits_ >= std::max(digits, kLeastDigits))
        return;
    number_digits_ = std::max(digits, kLeastDigits);
    FindSettings& settings = viewer_->Settings();
    const int number = QFontMetrics(hit_grid_->font()).horizontalAdvance(u'0') * number_digits_ +
                       kIconSize + 3 * kMedium;
    // Words of the head are not cut.
    const auto place = [&](HitRows::Column column) {
        const QFontMetrics head(Semibold(font()));
        const QString words = hits_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        return GridColumn{
            .least = std::max(kLeastNumber, head.horizontalAdvance(words) + 2 * kWindowEdge)};
    };
    hit_grid_->SetColumns(
        {{.least = number},
         {.least = kLeastNames, .shares = true},
         place(HitRows::Line),
         place(HitRows::Col),
         {.least = kLeastItem, .shares = true}},
        [&settings](int at) { return settings.fgFilesColWidth[static_cast<std::size_t>(at)]; },
        [&settings](int at, std::int32_t twips) {
            settings.fgFilesColWidth[static_cast<std::size_t>(at)] = twips;
        });
    error_grid_->SetColumns(
        {{.least = kLeastNumber}, {.least = kLeastNames, .shares = true}},
        [&settings](int at) {
            return settings.fgErrorMessagesColWidth[static_cast<std::size_t>(at)];
        },
        [&settings](int at, std::int32_t twips) {
            settings.fgErrorMessagesColWidth[static_cast<std::size_t>(at)] = twips;
        });
}

// ---- of the main window ----

QString FindPage::Caption() const {
    const QString what = viewer_ == nullptr ? QString() : ToQt(viewer_->SearchedFor());
    return what.isEmpty() ? text_("Find Text In Files") : what;
}

QString FindPage::Title() const {
    return caption_.isEmpty() ? Caption() : caption_;
}

void FindPage::Tick() {
    if (viewer_ == nullptr)
        return;
    if (std::exchange(errors_late_, false))
        errors_->TakeRows();
    if (viewer_->ReadsLines())
        pane_->ShowReading();
    if (searching_)
        ShowCounts();
}

void FindPage::ShowWords() {
    boxes_->ShowWords();
    picker_->ShowWords();
    ShowNothingFound();
    ShowProtected();
    for (FindTable* table : {static_cast<FindTable*>(hits_), static_cast<FindTable*>(errors_)})
        Q_EMIT table->headerDataChanged(Qt::Horizontal, 0, table->columnCount() - 1);
    number_digits_ = 0;
    SetColumns();
    pane_->ShowHead();
    ShowCounts();
    hit_grid_->viewport()->update();
}

std::vector<QWidget*> FindPage::FocusStops() const {
    std::vector<QWidget*> stops{&boxes_->SearchFor(), &boxes_->Folder(), hit_grid_};
    if (pane_->Message().isEmpty())
        stops.push_back(&pane_->View());
    if (passwords_->isVisible())
        stops.push_back(&passwords_->Field());
    if (!error_pane_->isHidden())
        stops.push_back(error_grid_);
    return stops;
}

}  // namespace zorvane
