#include "folders/ui/compare_folders_page.h"

#include <QHeaderView>
#include <QMenu>
#include <QStackedLayout>
#include <QVBoxLayout>

#include "common/ui/cards.h"
#include "common/ui/measures.h"
#include "common/ui/progress_card.h"
#include "common/ui/style_sheet.h"
#include "compare/ui/command_buttons.h"
#include "folders/ui/folder_commands.h"

namespace zorvane {
namespace {

constexpr int kStatusPanels = 3;

}  // namespace

CompareFoldersPage::CompareFoldersPage(CommandSet& commands, Theme& theme, UiText text,
                                       FoldersHost host, SpecialFolders& folders)
    : RecordsPage(commands, theme, std::move(text), folders), host_(std::move(host)) {}

CompareFoldersPage::~CompareFoldersPage() {
    ReleaseParts();
}

// What borrows the viewer goes before it.
void CompareFoldersPage::ReleaseParts() {
    viewer_ = nullptr;
    delete text_options_;
    ReleaseContents();
}

void CompareFoldersPage::Connect(frmCompareDir& viewer) {
    viewer_ = &viewer;
    MakeParts();
    ConnectParts();
    ConnectContents(FolderCommands());
}

void CompareFoldersPage::MakeParts() {
    QVBoxLayout* rows = MakeContents();
    bar_ = new FoldersBar(commands_, text_, contents_);
    bar_->dress = [this](QMenu& menu) { theme_.Dress(menu); };
    rows->addWidget(bar_);
    MakeOptions();
    rows->addWidget(options_);
    boxes_ = new FolderBoxes(commands_, *viewer_, text_, contents_);
    rows->addWidget(boxes_);
    errors_ = new ErrorLine(text_, contents_);
    rows->addWidget(errors_);
    rows->addWidget(MakeGround(), 1);
    legend_ = new FolderLegend(text_, contents_);
    rows->addWidget(legend_);
    rows->addWidget(MakeStatus(kStatusPanels));
}

void CompareFoldersPage::MakeOptions() {
    MakeOptionArea();
    compare_options_ = new FolderOptionsPage(*viewer_, text_, options_);
    report_options_ = new FolderReportPage(*viewer_, text_, options_);
    compare_options_->text_options_wanted = [this] {
        ShowTextOptions(PairOptionsDialog::Tab::Compare);
    };
    report_options_->report_options_wanted = [this] {
        ShowTextOptions(PairOptionsDialog::Tab::Report);
    };
    options_->AddPage(compare_options_, text_("Compare Options"));
    options_->AddPage(report_options_, text_("Report Options"));
}

QWidget* CompareFoldersPage::MakeGround() {
    auto* ground = new QWidget(contents_);
    auto* layers = new QVBoxLayout(ground);
    layers->setContentsMargins(0, 0, 0, 0);
    table_ = new FolderTable(*viewer_, text_, ground);
    grid_ = new FolderGrid(*viewer_, *table_, text_, ground);
    layers->addWidget(grid_);
    empty_ = MakeLabel(QString(), look::kHint, grid_);
    empty_->setAlignment(Qt::AlignCenter);
    empty_->hide();
    auto* over = new QVBoxLayout(grid_);
    over->addWidget(empty_, 0, Qt::AlignCenter);
    progress_ = new ProgressCard(text_, ground);
    return ground;
}

void CompareFoldersPage::ConnectParts() {
    table_->order_changed = [this] {
        bar_->ShowCounts(table_->Order());
        ShowEmpty();
        host_.commands_changed();
    };
    boxes_->folder_chosen = [this](Side side, const QString& path) { TakeFolder(side, path); };
    boxes_->dropped = [this](Side side, const QStringList& paths) { DropFolders(side, paths); };
    boxes_->run_wanted = [this] { Compare(); };
    connect(grid_->horizontalHeader(), &QHeaderView::sectionResized, this,
            [this] { boxes_->AlignTo(grid_->columnViewportPosition(1)); });
    connect(legend_, &FolderLegend::HideWanted, this, [this] { viewer_->ToggleLegend(); });
    connect(progress_, &ProgressCard::AbortClicked, this, [this] { viewer_->Abort(); });
}

QMenu* CompareFoldersPage::MakeMenu() {
    QMenu* menu = BeginMenu();
    const auto act = [&](const char* words, const char* id, std::function<void()> run = {}) {
        AddCommandTo(*menu, commands_, id, text_(words), std::move(run));
    };
    act("Compare Files (Double Click)", "folders.compare",
        [this] { Files().CompareSelectedFiles(Cell().row, false); });
    act("Compare Files, Open New Window", "folders.compare_new");
    act("Launch Selected File", "folders.launch");
    menu->addSeparator();
    act("Refresh (F5)", "compare.run");
    act("Report (F2)", "report.make");
    menu->addSeparator();
    const char* copy = Cell().column == FolderColumn::Original ? "folders.copy_to_modified"
                                                               : "folders.copy_to_original";
    act("Copy File to Other Folder", copy);
    act("Change Font", "view.font");
    menu->addSeparator();
    act("Delete File to Recycle Bin", "folders.recycle");
    act("Delete File Permanently", "folders.delete",
        [this] { Files().PermanentDelete(Cell().row, Cell().column); });
    return menu;
}

// ---- of the main window ----

QString CompareFoldersPage::Caption() const {
    if (viewer_ == nullptr)
        return {};
    const auto name = [](const std::string& folder) {
        QString path = ToQt(folder);
        while (path.size() > 1 && (path.endsWith(u'/') || path.endsWith(u'\\')))
            path.chop(1);
        return FileNameOf(path);
    };
    const QString original = name(viewer_->cbSelectOriginal);
    const QString modified = name(viewer_->cbSelectModified);
    if (fresh_ || original.isEmpty() || modified.isEmpty())
        return text_("Compare Folders");
    return original + QStringLiteral(" vs. ") + modified;
}

void CompareFoldersPage::Tick() {
    if (viewer_ == nullptr)
        return;
    table_->TakeOrder({});
    if (!viewer_->Busy())
        return;
    const double all = std::max(1, viewer_->VestrelX1().getRecordCount());
    constexpr double kWhole = 100;
    const bool walking = viewer_->VestrelX1().getBusy();
    progress_->SetProgress(walking ? 0 : kWhole * viewer_->RowCount() / all, status_->Panel(2));
}

void CompareFoldersPage::ShowWords() {
    boxes_->ShowWords();
    bar_->ShowCounts(table_->Order());
    Q_EMIT table_->headerDataChanged(Qt::Horizontal, 0, static_cast<int>(kFolderColumns) - 1);
    grid_->viewport()->update();
}

std::vector<QWidget*> CompareFoldersPage::FocusStops() const {
    return {bar_->FilterFocus(), &boxes_->Box(Side::Original), &boxes_->Box(Side::Modified), grid_};
}

}  // namespace zorvane
