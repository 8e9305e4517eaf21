// What a page shows of a result, and what it says where there is none.
#include <algorithm>

#include <QHBoxLayout>
#include <QLineEdit>
#include <QStackedWidget>

#include "common/ui/qt_text.h"
#include "compare/document/heading_places.h"
#include "compare/ui/compare_files_page.h"
#include "load/password_wanted.h"

namespace zorvane {
namespace {

struct KindLook {
    const char* icon;
    Token color;
};
KindLook LookOf(MarkKind kind) {
    switch (kind) {
        case MarkKind::Deleted:
            return {"deleted", Token::DeletedText};
        case MarkKind::Added:
            return {"added", Token::AddedText};
        case MarkKind::Moved:
            return {"moved", Token::MovedText};
        case MarkKind::Changed:
        case MarkKind::None:
            break;
    }
    return {"changed", Token::ChangedText};
}

// A message as a person reads it: without the name of the step that found it.
QStringList LinesOf(const std::string& message) {
    QString words = ToQt(WithoutAdvice(message));
    const qsizetype step = words.indexOf(QStringLiteral("(): "));
    if (step >= 0 && !words.left(step).contains(u' '))
        words.remove(0, step + 4);
    words.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    while (words.contains(QStringLiteral("\n\n")))
        words.replace(QStringLiteral("\n\n"), QStringLiteral("\n"));
    return words.trimmed().split(u'\n');
}

// Each line once; "a.txt" above "a.txt: larger than ..." says nothing.
QString ReasonOf(const std::vector<std::string>& missing, const std::vector<std::string>& told) {
    QStringList reasons;
    for (const std::vector<std::string>* list : {&missing, &told}) {
        for (const std::string& message : *list)
            reasons.append(LinesOf(message));
    }
    reasons.removeDuplicates();
    QStringList telling;
    for (const QString& line : reasons) {
        const bool said = std::any_of(reasons.begin(), reasons.end(), [&](const QString& other) {
            return other.startsWith(line + QStringLiteral(": "));
        });
        if (!said)
            telling.append(line);
    }
    return telling.join(u'\n');
}

// What a card asks for can be typed at once.
void FocusField(const Card& card) {
    auto* field = card.findChild<QLineEdit*>();
    if (field != nullptr && field->window()->isActiveWindow())
        field->setFocus();
}

// What lies in a document and no reader turns into words.
bool HoldsUnreadWords(BesideKind kind) {
    return kind == BesideKind::Picture || kind == BesideKind::Drawing ||
           kind == BesideKind::PageWithoutText;
}

}  // namespace

// ---- the result ----

void CompareFilesPage::SetDifferenceList(const DifferenceList& list) {
    if (rooms_ == nullptr)
        return;
    ShowResultTexts();
    FillList(list);
    const Comparison* shown = viewer_->ShownComparison();
    kinds_ = shown == nullptr ? KindCounts() : CountKinds(*shown);
    ShowCounts();
    has_verdict_ = shown != nullptr;
    ShowIgnored();
    ShowVerdict();
    host_.commands_changed();
}

// The comparison is the viewer's and stays as long as this list does.
void CompareFilesPage::ShowResultTexts() {
    const Comparison* shown = viewer_->ShownComparison();
    const PerSide<SharedText> texts{viewer_->ComparedText(Side::Original),
                                    viewer_->ComparedText(Side::Modified)};
    // What an early result has shown already stays, and where it is scrolled to.
    const bool others = shown == nullptr || texts.original == nullptr ||
                        texts.original != texts_shown_.original ||
                        texts.modified != texts_shown_.modified;
    if (others) {
        pane_->SetComparison(nullptr);
        for (const Side side : kBothSides)
            ShowText(side, texts[side].get());
        if (texts.original != nullptr)
            pane_->SetHeadings(HeadingPlaces(*texts.original));
    }
    texts_shown_ = texts;
    if (shown != nullptr)
        pane_->SetComparison(std::shared_ptr<const Comparison>(std::shared_ptr<void>(), shown));
    told_stale_ = false;
    bar_->SetStale(false);
}

void CompareFilesPage::ShowText(Side side, const RichText* text) {
    const ViewerEditors& editors = viewer_->Editors();
    const RichDocument& marked =
        (side == Side::Original ? editors.rtbOriginalDiffFinal : editors.rtbModifiedDiffFinal)
            .editor;
    shown_texts_[side].SetDefaultFormat(marked.DefaultFormat());
    shown_texts_[side].SetRich(text != nullptr ? *text : marked.Rich());
}

void CompareFilesPage::FillList(const DifferenceList& list) {
    const auto row = [this, &list](int at) {
        // The ends of cells are no letters.
        ListRow line{.text = ToQt(list.Line(at)).replace(QChar(7), QStringLiteral(" · "))};
        const Comparison* shown = viewer_ == nullptr ? nullptr : viewer_->ShownComparison();
        if (shown != nullptr && at < static_cast<int>(shown->records.size())) {
            const KindLook look = LookOf(MarkKindOf(*shown, static_cast<std::size_t>(at)));
            line.icon = QString::fromLatin1(look.icon);
            line.icon_color = look.color;
        }
        return line;
    };
    QString none = text_("No differences");
    if (list.Count() > 0)
        none =
            list.Count() == 1 ? text_("1 difference") : text_("%1 differences").arg(list.Count());
    bar_->List().SetRows(list.Count(), row, none);
    bar_->SetPlace(0, list.Count());
}

void CompareFilesPage::ShowCounts() {
    const Comparison* shown = viewer_->ShownComparison();
    ResultCounts counts;
    if (shown != nullptr) {
        counts = {static_cast<int>(shown->records.size()), shown->record_counts.changes,
                  shown->record_counts.additions, shown->record_counts.deletions,
                  static_cast<int>(NotesOf(*shown, Look().CountFormatting).size())};
    }
    head_->SetCounts(counts);
    panel_->Show({shown, kinds_, Look().CountFormatting, NotCompared()});
}

QStringList CompareFilesPage::NotCompared() const {
    QStringList lines;
    for (const std::string* reason :
         {&viewer_->NoTextReasons().original, &viewer_->NoTextReasons().modified}) {
        if (!reason->empty())
            lines.append(ToQt(*reason));
    }
    const auto unread = [this](Side side) {
        const std::vector<BesideItem>& items = viewer_->BesideItems(side);
        return static_cast<int>(
            std::count_if(items.begin(), items.end(),
                          [](const BesideItem& item) { return HoldsUnreadWords(item.kind); }));
    };
    const int pictures = std::max(unread(Side::Original), unread(Side::Modified));
    if (pictures == 1)
        lines.append(text_("Text inside 1 picture"));
    else if (pictures > 1)
        lines.append(text_("Text inside %1 pictures").arg(pictures));
    return lines;
}

QStringList CompareFilesPage::KindsOut() const {
    const clsCompareFileOptions& options = viewer_->Options();
    QStringList kinds;
    if (options.bIgnoreCase.Data())
        kinds.append(text_("case"));
    if (options.bIgnoreWhitespace.Data())
        kinds.append(text_("blanks"));
    if (!Look().CountNumbering)
        kinds.append(text_("numbering"));
    return kinds;
}

void CompareFilesPage::ShowIgnored() {
    const clsCompareFileOptions& options = viewer_->Options();
    QStringList kinds = KindsOut();
    if (options.bIgnoreEmptyLines.Data())
        kinds.append(text_("empty lines"));
    if (!options.sIgnoreRegularExpression.Data().empty())
        kinds.append(text_("an expression"));
    if (!Look().CountFormatting)
        kinds.append(text_("formatting"));
    head_->SetIgnored(kinds);
}

// ---- no result ----

void CompareFilesPage::ShowVerdict() {
    const Comparison* shown = viewer_->ShownComparison();
    Card* card = nullptr;
    if (shown != nullptr && shown->Same() && !viewer_->ShowsEarlyResult()) {
        const clsCompareFileOptions& options = viewer_->Options();
        Verdict verdict;
        verdict.both_empty = viewer_->Editors().rtbOriginal.editor.Length() == 0 &&
                             viewer_->Editors().rtbModified.editor.Length() == 0;
        verdict.identical = shown->same_files;
        verdict.paragraphs = shown->Paragraphs(Side::Original);
        verdict.not_counted = (options.bIgnoreCase.Data() ? kinds_.letter_case : 0) +
                              (options.bIgnoreWhitespace.Data() ? kinds_.blanks : 0) +
                              (Look().CountNumbering ? 0 : kinds_.numbering);
        verdict.kinds_out = KindsOut();
        verdict.beside = NotesOf(*shown, Look().CountFormatting);
        verdict.not_compared = NotCompared();
        card = MakeVerdictCard(
            verdict, text_,
            {.count_them = [this] { CountAllKinds(); }, .show_panel = [this] { SetPanel(true); }});
    }
    verdict_->SetCard(card);
    if (card == nullptr)
        verdict_->hide();
    result_->setCurrentWidget(card == nullptr ? static_cast<QWidget*>(pane_) : verdict_);
}

// Of a protected document the password is asked for where it would be shown.
Card* CompareFilesPage::MakeUnread(Side side, const std::vector<std::string>& reasons,
                                   UnreadSteps steps) {
    const FileTypeOptions type = OptionsOfSide(side);
    if (!WantsPassword(reasons, FromQt(text_(kPasswordWanted))) || !AskedPasswords::Takes(type))
        return MakeUnreadCard(ReasonOf(missing_, reasons), text_, steps);
    steps.wrong_password = passwords_.WasGiven(*viewer_, side);
    steps.open_with = [this, side, type](const QString& password) {
        passwords_.Give(*viewer_, side, type, FromQt(password));
        Compare();
    };
    return MakePasswordCard(text_, steps);
}

bool CompareFilesPage::ShowUnreadable(Side side, const std::vector<std::string>& reasons) {
    if (rooms_ == nullptr)
        return false;
    started_ = true;
    ShowRoom();
    const auto again = [this, side] {
        if (viewer_->ShownComparison() == nullptr)
            Compare();
        else
            viewer_->LoadAgain(side);
    };
    UnreadSteps steps;
    steps.choose_another = [this, side] { ChooseFile(side); };
    steps.try_again = again;
    commands_.Refresh();
    if (commands_.Action("file.type_options")->isEnabled())
        steps.type_options = [this] { commands_.Run("file.type_options"); };
    Card* card = MakeUnread(side, reasons, std::move(steps));
    missing_.clear();
    if (viewer_->ShownComparison() != nullptr)
        result_line_->ShowMessage(text_("Result of the files before"), {});
    if (LayoutNow() == PaneLayout::Result && viewer_->ShownComparison() == nullptr) {
        verdict_->SetCard(card);
        result_->setCurrentWidget(verdict_);
        FocusField(*card);
        return true;
    }
    if (LayoutNow() == PaneLayout::Result) {
        editors_wanted_ = true;
        viewer_->Settings().view.Layout = PaneLayout::EditorsAndResult;
        ApplyPlan();
    }
    editors_->Ground(side).SetCard(card);
    FocusField(*card);
    return true;
}

// ---- files on the disk ----

MessageBar& CompareFilesPage::LineOf(Side side) {
    return editors_->isVisible() ? editors_->Line(side) : *result_line_;
}

QPushButton* CompareFilesPage::MakeStep(const char* words, std::function<void()> step) {
    auto* button = new Button(text_(words));
    connect(button, &QPushButton::clicked, this, [step = std::move(step)] { step(); });
    return button;
}

bool CompareFilesPage::ShowFileNews(const FileNotice& notice) {
    if (rooms_ == nullptr)
        return false;
    for (const Side side : kBothSides) {
        if (!notice.sides[side])
            continue;
        if (notice.news == FileNews::Changed)
            TellChanged(side, notice);
        else
            TellGone(side, notice);
    }
    return true;
}

void CompareFilesPage::TellChanged(Side side, const FileNotice& notice) {
    MessageBar& line = LineOf(side);
    QString words = text_("Another program changed this file.");
    if (&line == result_line_)
        words.prepend(FileNameOf(ToQt(notice.path)) + QStringLiteral(": "));
    line.ShowMessage(words, {MakeStep("Load Again",
                                      [this, side, &line] {
                                          line.HideMessage();
                                          viewer_->LoadAgain(side);
                                      }),
                             MakeStep("Keep", [&line] { line.HideMessage(); })});
}

void CompareFilesPage::TellGone(Side side, const FileNotice& notice) {
    MessageBar& line = LineOf(side);
    QString words = text_("This file is no longer there.");
    if (&line == result_line_)
        words.prepend(FileNameOf(ToQt(notice.path)) + QStringLiteral(": "));
    const auto save = [this, side, &line] {
        viewer_->SetActiveEditor(side == Side::Original ? EditorTarget::Original
                                                        : EditorTarget::Modified);
        if (viewer_->SaveActiveEditorAs().end == SaveEnd::Saved)
            line.HideMessage();
    };
    line.ShowMessage(words, {MakeStep("Save As...", save)});
}

// A run is about to tell anew what is wrong.
void CompareFilesPage::ForgetNews() {
    for (const Side side : kBothSides) {
        editors_->Ground(side).SetCard(nullptr);
        editors_->Line(side).HideMessage();
    }
    result_line_->HideMessage();
    if (viewer_->ShownComparison() == nullptr)
        ShowVerdict();
}

}  // namespace zorvane
