#include "app/ui/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenuBar>

#include "app/ui/frame_commands.h"
#include "common/file_utilities.h"
#include "common/platform/terminal.h"
#include "common/ui/icons.h"
#include "common/ui/language_dialog.h"
#include "common/ui/measures.h"
#include "common/ui/question.h"
#include "common/ui/toolkit_texts.h"
#include "common/ui/widget_words.h"
#include "common/ui/window_placing.h"
#include "compare/ui/command_buttons.h"
#include "compare/ui/compare_commands.h"
#include "find/ui/find_commands.h"
#include "folders/ui/folder_commands.h"

namespace zorvane {
namespace {

constexpr int kPollInterval = 33;
constexpr float kTwipsPerPixel = 15;  // 1440 to the inch over 96 pixels
constexpr int kLeastWidth = 480;
constexpr int kLeastHeight = 360;

Viewer* ViewerOf(QWidget* page) {
    const auto* shown = dynamic_cast<ViewerPage*>(page);
    return shown == nullptr ? nullptr : shown->ShownViewer();
}

}  // namespace

MainWindow::MainWindow(ProcessState& process, Theme& theme)
    : process_(process), theme_(theme), text_([this](std::string_view english) {
          std::string text = process_.Translate(english);
          shown_texts_.Note(english, text);
          return text;
      }) {
    setWindowIcon(ProgramIcon());
    setWindowTitle(QStringLiteral("Zorvane"));
    setMinimumSize(kLeastWidth, kLeastHeight);
    theme_.Dress(*this);
    poll_.setInterval(kPollInterval);
    connect(&poll_, &QTimer::timeout, this, &MainWindow::Tick);
    refresh_.setSingleShot(true);
    refresh_.setInterval(0);
    connect(&refresh_, &QTimer::timeout, this, [this] {
        if (commands_ != nullptr)
            commands_->Refresh();
    });
}

MainWindow::~MainWindow() = default;

void MainWindow::SetFrame(frmMainMDI& frame) {
    frame_ = &frame;
    process_.messages.WaitForWindow([this] {
        QMetaObject::invokeMethod(
            this, [this] { frame_->ShowMessages(); }, Qt::QueuedConnection);
    });
}

// Behind the start of the language, which all captions are in.
void MainWindow::Load() {
    if (std::exchange(loaded_, true))
        return;
    ApplyLanguageFont(process_.translator.gsLanguageFont);
    ShowToolkitIn(process_.translator.gsLanguage);
    commands_ = new CommandSet(
        {FrameCommands(), CompareCommands(), FolderCommands(), FindCommands()}, text_, *this);
    BindCommands();
    commands_->FillMenuBar(*menuBar(), MenuOrder());
    area_ = new WorkArea(text_("Close"), this);
    area_->chosen = [this](QWidget& page) {
        if (Viewer* viewer = ViewerOf(&page))
            frame_->WasActivated(*viewer);
    };
    area_->close_wanted = [this](QWidget& page) {
        if (Viewer* viewer = ViewerOf(&page))
            frame_->CloseViewer(*viewer);
    };
    area_->laid_out = [this] { ShareCommands(); };
    setCentralWidget(area_);
    palette_ = new CommandPalette(*commands_, text_, *this);
    commands_->Refresh();
}

void MainWindow::BringToFront(QWidget& page) {
    area_->Show(page);
    if (process_.gbCommandLineRunning)
        return;
    show();
    if (auto* shown = dynamic_cast<ViewerPage*>(&page))
        shown->BeginInteractive();
}

void MainWindow::BeginInteractive() {
    for (ViewerPage* page : OpenPages())
        page->BeginInteractive();
    show();
    poll_.start();
}

std::vector<ViewerPage*> MainWindow::OpenPages() const {
    std::vector<ViewerPage*> open;
    if (area_ == nullptr)
        return open;
    for (QWidget* page : area_->Pages()) {
        if (ViewerOf(page) != nullptr)
            open.push_back(dynamic_cast<ViewerPage*>(page));
    }
    return open;
}

ViewerPage* MainWindow::ActiveViewerPage() const {
    QWidget* page = area_ == nullptr ? nullptr : area_->Current();
    return ViewerOf(page) == nullptr ? nullptr : dynamic_cast<ViewerPage*>(page);
}

CompareFilesPage* MainWindow::ActivePage() const {
    return dynamic_cast<CompareFilesPage*>(ActiveViewerPage());
}

CompareFoldersPage* MainWindow::ActiveFolders() const {
    return dynamic_cast<CompareFoldersPage*>(ActiveViewerPage());
}

FindPage* MainWindow::ActiveFind() const {
    return dynamic_cast<FindPage*>(ActiveViewerPage());
}

void MainWindow::Tick() {
    frame_->Poll();
    if (ended_ || area_ == nullptr)
        return;
    for (ViewerPage* page : OpenPages())
        page->Tick();
}

void MainWindow::RefreshLater() {
    if (!refresh_.isActive())
        refresh_.start();
}

// Of windows beside each other the commands are those of the one in front.
void MainWindow::ShareCommands() {
    QWidget* current = area_->Current();
    for (QWidget* page : area_->Pages()) {
        if (page != current)
            SetCommandsElsewhere(*page, *commands_, area_->Free());
    }
    commands_->Refresh();
    if (current != nullptr)
        SetCommandsElsewhere(*current, *commands_, false);
}

void MainWindow::ShowCaptions() {
    for (QWidget* page : area_->Pages()) {
        if (const auto* shown = dynamic_cast<ViewerPage*>(page))
            area_->SetCaption(*page, shown->Caption());
    }
    const ViewerPage* active = ActiveViewerPage();
    setWindowTitle(active == nullptr ? QStringLiteral("Zorvane")
                                     : active->Title() + QStringLiteral(" – Zorvane"));
}

// ---- of the frame ----

WindowState MainWindow::State() const {
    if (isMinimized())
        return WindowState::Minimised;
    return isMaximized() ? WindowState::Maximised : WindowState::Normal;
}

// A run of a command line shows no window.
void MainWindow::SetState(WindowState state) {
    switch (state) {
        case WindowState::Minimised:
            setWindowState(Qt::WindowMinimized);
            break;
        case WindowState::Maximised:
            setWindowState(Qt::WindowMaximized);
            break;
        case WindowState::Normal:
            setWindowState(Qt::WindowNoState);
            break;
    }
}

FrameRectangle MainWindow::Rectangle() const {
    const QRect place = isMaximized() || isMinimized() ? normalGeometry() : geometry();
    return {static_cast<float>(place.x()) * kTwipsPerPixel,
            static_cast<float>(place.y()) * kTwipsPerPixel,
            static_cast<float>(place.width()) * kTwipsPerPixel,
            static_cast<float>(place.height()) * kTwipsPerPixel};
}

// On the screens that are there: one may have gone since.
void MainWindow::SetRectangle(const FrameRectangle& rectangle) {
    const auto pixels = [](float twips) {
        constexpr float kMost = 100'000;
        return static_cast<int>(std::clamp(twips / kTwipsPerPixel, -kMost, kMost));
    };
    QRect place(pixels(rectangle.left), pixels(rectangle.top), pixels(rectangle.width),
                pixels(rectangle.height));
    place.setSize(place.size().expandedTo(minimumSize()));
    setGeometry(WhollyOnAScreen(place));
}

void MainWindow::ViewersChanged() {
    if (area_ == nullptr)
        return;
    // A page whose viewer has gone is about to go.
    for (QWidget* page : std::vector<QWidget*>(area_->Pages())) {
        if (ViewerOf(page) == nullptr)
            area_->Remove(*page);
    }
    ShowCaptions();
    RefreshLater();
}

void MainWindow::CloseDialogs() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* dialog = qobject_cast<QDialog*>(window))
            dialog->reject();
    }
}

void MainWindow::ShowMessage(const std::string& message) {
    if (!has_display_) {
        IgnoreFailure(WriteStream(Stream::Error, message + "\n"), "there is no other place for it");
        return;
    }
    Tell(QStringLiteral("Zorvane"), ToQt(message), text_("OK"), isVisible() ? this : nullptr);
}

void MainWindow::EndProgram() {
    ended_ = true;
    poll_.stop();
    QApplication::quit();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    // The frame ends the program when all its viewers are gone.
    event->setAccepted(ended_);
    if (!ended_)
        frame_->CloseFrame();
}

// ---- of the language's choice ----

LanguageChoice MainWindow::AskLanguage(const LanguageList& offered, const std::string& font) {
    LanguageDialog dialog(
        offered, ToQt(font),
        {.edit_file =
             [this](const QString& language) { EditLanguageFile(process_, FromQt(language)); },
         .help = [this] { OpenPath(process_.sHelpFile); }},
        text_, isVisible() ? this : nullptr);
    theme_.Dress(dialog);
    dialog.exec();
    return dialog.Choice();
}

void MainWindow::ShowInformation(const std::string& text, const std::string& caption) {
    Tell(ToQt(caption), ToQt(text), text_("OK"), this);
}

}  // namespace zorvane
