#include "find/ui/hit_pane.h"

#include <algorithm>

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "common/ui/cards.h"
#include "common/ui/file_box.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"
#include "compare/ui/theme_colors.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr std::int32_t kHalfPoints = 20;  // of the font that nobody chose
constexpr int kHalves = 2;
constexpr const char* kPlainFont = "Courier";

Color ColorOf(const QColor& color) {
    constexpr int kGreen = 8;
    constexpr int kBlue = 16;
    return {color.red() | color.green() << kGreen | color.blue() << kBlue};
}

QString FolderOf(const QString& path) {
    const QString name = FileNameOf(path);
    return FileNameOf(path.chopped(std::min(path.size(), name.size() + 1)));
}

}  // namespace

// ---- marks ----

ParagraphMark LineMarks::Of(ParagraphNumber paragraph) const {
    if (paragraph.value != marked_ + 1)
        return {};
    return {.kind = MarkKind::Changed};
}

std::array<std::int32_t, 2> LineMarks::Numbers(ParagraphNumber paragraph) const {
    return {static_cast<std::int32_t>(first_line_) + paragraph.value - 1, 0};
}

// ---- the pane ----

HitPane::HitPane(frmFindTextInFiles& viewer, UiText text, QWidget* parent)
    : QFrame(parent), viewer_(viewer), text_(std::move(text)) {
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(MakeHead());
    body_ = new QStackedWidget(this);
    view_ = MakeView(document_, text_("Lines around the hit"));
    view_->SetMarks(&marks_);
    whole_view_ = MakeView(whole_, text_("Document of the hit"));
    message_ =
        MakeLabel(text_("Press Enter on a hit to see the lines around it."), look::kHint, body_);
    message_->setAlignment(Qt::AlignCenter);
    message_->setContentsMargins(kWindowEdge, kSmall, kWindowEdge, kSmall);
    message_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    body_->addWidget(message_);
    body_->setCurrentWidget(message_);
    rows->addWidget(body_, 1);
    ShowHead();
    ShowLook();
}

// The views look into the documents and the marks, which are parts of this.
HitPane::~HitPane() {
    delete view_;
    delete whole_view_;
}

RichTextView* HitPane::MakeView(RichDocument& document, const QString& name) {
    auto* view = new RichTextView(document, body_);
    view->setAccessibleName(name);
    view->SetReadOnly(true);
    view->setFrameShape(QFrame::NoFrame);
    body_->addWidget(view);
    return view;
}

bool HitPane::ShowsDocument() const {
    return viewer_.Settings().bShowDocument;
}

void HitPane::ShowFace() {
    faces_->SetCurrent(static_cast<int>(ShowsDocument() ? HitFace::Document : HitFace::Lines));
}

void HitPane::SetZoom(double zoom) {
    view_->SetZoom(zoom);
    whole_view_->SetZoom(zoom);
}

void HitPane::SetWrap(bool wrap) {
    view_->SetWrap(wrap);
    whole_view_->SetWrap(wrap);
}

QWidget* HitPane::MakeHead() {
    auto* head = new QWidget(this);
    head->setFixedHeight(kFileRowHeight);
    auto* line = new QHBoxLayout(head);
    line->setContentsMargins(kWindowEdge, 0, kMedium, 0);
    line->setSpacing(kSmall);
    name_ = MakeLabel(QString(), look::kHeading, head);
    name_->setWordWrap(false);
    line->addWidget(name_);
    place_ = MakeLabel(QString(), look::kBeside, head);
    place_->setWordWrap(false);
    place_->setMinimumWidth(1);
    line->addWidget(place_, 1);
    faces_ = new SegmentedGroup(text_("What is shown of the hit"), head);
    faces_->Add(static_cast<int>(HitFace::Lines), text_("Lines"), QString(), text_("Lines"));
    faces_->Add(static_cast<int>(HitFace::Document), text_("Document"), QString(),
                text_("Document"));
    connect(faces_, &SegmentedGroup::Chosen, this, [this](int face) {
        viewer_.SetShowDocument(face == static_cast<int>(HitFace::Document));
    });
    line->addWidget(faces_);
    compare_ =
        new Button(text_("Compare With..."), ButtonLook::Flat, QStringLiteral("compare"), head);
    connect(compare_, &QPushButton::clicked, this, [this] { compare_wanted(); });
    line->addWidget(compare_);
    open_ = new Button(text_("Open"), ButtonLook::Flat, QStringLiteral("launch"), head);
    connect(open_, &QPushButton::clicked, this, [this] { open_wanted(); });
    line->addWidget(open_);
    for (Button* button : {compare_, open_})
        button->setToolTip(button->Caption());
    return head;
}

void HitPane::ShowHead() {
    const ShownHit& hit = viewer_.Shown();
    const QString path = ToQt(hit.file);
    place_words_.clear();
    if (!path.isEmpty()) {
        place_words_ = FolderOf(path) + QStringLiteral("  ·  ") +
                       text_("line %1, column %2").arg(hit.line).arg(hit.column);
        if (!hit.place.empty())
            place_words_ += QStringLiteral("  ·  ") + ToQt(hit.place);
    }
    for (Button* button : {compare_, open_})
        button->setEnabled(!path.isEmpty());
    name_->setToolTip(path);
    place_->setToolTip(path);
    ShowPlace();
}

// The name is cut last.
void HitPane::ShowPlace() {
    const QString name = FileNameOf(ToQt(viewer_.Shown().file));
    const int used = compare_->width() + open_->width() + faces_->width() + 5 * kWindowEdge;
    const int most = std::max(1, width() - used);
    name_->setText(name_->fontMetrics().elidedText(name, Qt::ElideMiddle, most));
    const int left = most - name_->sizeHint().width() - kSmall;
    place_->setText(left < kColumnGap
                        ? QString()
                        : place_->fontMetrics().elidedText(place_words_, Qt::ElideRight, left));
}

QString HitPane::Message() const {
    return body_->currentWidget() == message_ ? message_->text() : QString();
}

void HitPane::ShowMessage(const QString& words) {
    message_->setText(words);
    body_->setCurrentWidget(message_);
}

void HitPane::ShowReading() {
    ShowMessage(text_("Reading the file..."));
}

// ---- lines ----

CharFormat HitPane::LineFormat() const {
    const FindSettings& settings = viewer_.Settings();
    CharFormat format;
    format.half_points = kHalfPoints;
    format.font = FontName(kPlainFont);
    // The one that settings begin with stands for the desktop's own.
    if (settings.FontName != FindSettings().FontName &&
        QFontDatabase::hasFamily(ToQt(settings.FontName))) {
        format.font = FontName(settings.FontName);
        format.half_points = static_cast<std::int32_t>(settings.FontSize * kHalves);
    }
    format.bold = settings.FontBold;
    format.italic = settings.FontItalic;
    return format;
}

void HitPane::FillLines() {
    const ContextRows& rows = viewer_.fgFileWithHit();
    const CharFormat plain = LineFormat();
    CharFormat marked = plain;
    marked.bold = true;
    marked.fore_color = ColorOf(Tokens()[Token::ChangedText]);
    RichText text;
    for (std::size_t row = 0; row < rows.rows.size(); ++row) {
        if (row > 0)
            text.AppendPlain(u"\r\n", plain);
        text.AppendPlain(FromQt16(ToQt(rows.rows[row])),
                         static_cast<std::int32_t>(row) == rows.marked ? marked : plain);
    }
    marks_.Set(rows.first_line, rows.marked);
    document_.SetRich(std::move(text));
    MarkItem(rows);
}

// What was found, in the line that holds it.
void HitPane::MarkItem(const ContextRows& rows) {
    view_->SetFinder({}, {CharPos{0}, -1});
    view_->MarksChanged();
    if (rows.marked < 0 || rows.item_at < 0)
        return;
    const std::string& row = rows.rows[static_cast<std::size_t>(rows.marked)];
    const auto units = [&](std::int32_t from, std::int32_t length) {
        return static_cast<std::int32_t>(
            ToQt(std::string_view(row).substr(static_cast<std::size_t>(from),
                                              static_cast<std::size_t>(length)))
                .size());
    };
    const TextRange found{CharPos{units(0, rows.item_at)}, units(rows.item_at, rows.item_length)};
    const CharPos line = document_.FirstCharOfLine(rows.marked);
    view_->SetFinder(
        [words = FromQt16(ToQt(row)), found](std::u16string_view block) {
            return block == words ? std::vector<TextRange>{found} : std::vector<TextRange>{};
        },
        {line + found.first.value, found.length});
    document_.Select({line, 0});
}

void HitPane::ShowDocument() {
    const HitDocument* document = viewer_.Document();
    if (document == nullptr)
        return;
    if (!document->reason.empty()) {
        ShowMessage(ToQt(document->reason));
        return;
    }
    if (in_whole_ != document)
        whole_.SetRich(document->text);
    in_whole_ = document;
    body_->setCurrentWidget(whole_view_);
    const TextRange place = viewer_.PlaceInShownDocument();
    whole_view_->SetFinder(FoundInLine(viewer_.Engine().Rules()), place);
    if (place.length < 0)
        return;
    whole_.Select({place.first, 0});
    whole_view_->ShowPosition(place.first);
}

void HitPane::ShowLines() {
    if (ShowsDocument()) {
        ShowDocument();
        return;
    }
    FillLines();
    body_->setCurrentWidget(view_);
    view_->SetTop({ParagraphNumber{viewer_.fgFileWithHit().top + 1}});
}

// ---- look ----

void HitPane::ShowLook() {
    ShowFace();
    for (RichTextView* view : {view_, whole_view_})
        view->SetColors(ViewColorsOf(Tokens()));
    const TopPlace top = view_->Top();
    FillLines();
    view_->SetTop(top);
}

void HitPane::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    for (Button* button : {compare_, open_})
        button->SetCaptionShown(width() >= kCaptionsFrom);
    layout()->activate();
    ShowPlace();
}

void HitPane::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Tokens()[Token::Surface]);
    painter.setPen(Tokens()[Token::Hairline]);
    painter.drawLine(0, kFileRowHeight - 1, width(), kFileRowHeight - 1);
}

}  // namespace zorvane
