#include "common/ui/mark_style_row.h"

#include <QColorDialog>
#include <QHBoxLayout>
#include <QPainter>

#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

ColorButton::ColorButton(const QString& name, QWidget* parent) : QToolButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(name);
    setToolTip(name);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFixedSize(sizeHint());
}

void ColorButton::SetColor(const QColor& shown) {
    color_ = shown;
    setAccessibleDescription(shown.name());
    update();
}

void ColorButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    PaintBox(painter, rect(), kChipCorner, color_, Tokens()[Token::Border]);
    if (ShowsFocus(*this))
        PaintFocus(painter, rect(), kChipCorner);
}

FaceToggle::FaceToggle(TypeFace face, const QString& name, QWidget* parent)
    : QToolButton(parent), face_(face) {
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(name);
    setToolTip(name);
    setFixedSize(sizeHint());
    constexpr const char* kLetters = "BIUS";
    setText(QString(QLatin1Char(kLetters[static_cast<int>(face)])));
}

void FaceToggle::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const ColorTokens& tokens = Tokens();
    const bool on = isChecked();
    PaintBox(painter, rect(), kChipCorner,
             tokens[on || (underMouse() && isEnabled()) ? Token::On : Token::Surface],
             tokens[on ? Token::Border : Token::Hairline]);
    QFont font = Sized(this->font(), kSmallType, face_ == TypeFace::Bold);
    font.setItalic(face_ == TypeFace::Italic);
    font.setUnderline(face_ == TypeFace::Underline);
    font.setStrikeOut(face_ == TypeFace::Strike);
    painter.setFont(font);
    painter.setPen(tokens[isEnabled() ? Token::Text : Token::Disabled]);
    painter.drawText(rect(), Qt::AlignCenter, text());
    if (ShowsFocus(*this))
        PaintFocus(painter, rect(), kChipCorner);
}

/// Words of this kind as the documents show them.
class MarkStyleRow::Sample : public QWidget {
  public:
    Sample(LookMark kind, QString words, QWidget* parent)
        : QWidget(parent), kind_(kind), words_(std::move(words)) {
        setFixedHeight(26);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        SetWords(words_);
    }
    void SetWords(const QString& words) {
        words_ = words;
        setAccessibleName(words_);
        setMinimumWidth(QFontMetrics(Semibold(font())).horizontalAdvance(words_) + 2 * kMedium);
        update();
    }
    void SetChoice(const MarkChoice& choice) {
        choice_ = choice;
        update();
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const PaintedMark colors = PaintedColors(Tokens(), kind_, choice_.colors);
        PaintBox(painter, rect(), kChipCorner, colors.word, QColor());
        QFont face = choice_.bold ? Semibold(font()) : font();
        face.setItalic(choice_.italic);
        face.setUnderline(choice_.underline);
        face.setStrikeOut(choice_.strike);
        painter.setFont(face);
        painter.setPen(colors.text);
        painter.drawText(rect().adjusted(kMedium, 0, -kMedium, 0),
                         static_cast<int>(Qt::AlignVCenter | QStyle::visualAlignment(
                                                                 layoutDirection(), Qt::AlignLeft)),
                         words_);
    }

  private:
    LookMark kind_;
    QString words_;
    MarkChoice choice_;
};

MarkStyleRow::MarkStyleRow(LookMark kind, const QString& sample, UiText text, QWidget* parent)
    : QWidget(parent), kind_(kind), words_(sample), text_(std::move(text)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kTiny);
    sample_ = new Sample(kind, sample, this);
    row->addWidget(sample_, 1);
    AddToggle(TypeFace::Bold, "bold", &MarkChoice::bold);
    AddToggle(TypeFace::Italic, "italic", &MarkChoice::italic);
    AddToggle(TypeFace::Underline, "underlined", &MarkChoice::underline);
    AddToggle(TypeFace::Strike, "struck through", &MarkChoice::strike);
    row->addSpacing(kTiny);
    AddColor("colour of the words", &StoredColors::fore);
    AddColor("colour behind the words", &StoredColors::back);
    SetWords(sample);
    SetChoice({.colors = DefaultColors(kind)});
}

void MarkStyleRow::SetWords(const QString& words) {
    words_ = words;
    sample_->SetWords(words);
    for (const auto& [part, what] : names_) {
        const QString name = QStringLiteral("%1: %2").arg(words, text_(what));
        part->setAccessibleName(name);
        part->setToolTip(name);
    }
}

void MarkStyleRow::AddToggle(TypeFace face, const char* what, bool MarkChoice::*field) {
    auto* toggle = new FaceToggle(face, QString(), this);
    names_.emplace_back(toggle, what);
    layout()->addWidget(toggle);
    toggles_.emplace_back(toggle, field);
    // A screen reader turns it over without a click.
    connect(toggle, &QToolButton::toggled, this, [this, field](bool on) {
        if (choice_.*field == on)
            return;
        choice_.*field = on;
        ShowChoice();
        Q_EMIT Changed();
    });
}

void MarkStyleRow::AddColor(const char* what, std::int32_t StoredColors::*field) {
    auto* button = new ColorButton(QString(), this);
    names_.emplace_back(button, what);
    layout()->addWidget(button);
    colors_.emplace_back(button, field);
    connect(button, &QToolButton::clicked, this,
            [this, button, field] { AskColor(button->accessibleName(), field); });
}

void MarkStyleRow::AskColor(const QString& title, std::int32_t StoredColors::*field) {
    const QColor chosen = QColorDialog::getColor(FromStored(choice_.colors.*field), this, title);
    if (!chosen.isValid())
        return;
    choice_.colors.*field = ToStored(chosen);
    ShowChoice();
    Q_EMIT Changed();
}

void MarkStyleRow::SetChoice(const MarkChoice& choice) {
    choice_ = choice;
    ShowChoice();
}

void MarkStyleRow::ShowChoice() {
    for (const auto& [toggle, field] : toggles_)
        toggle->setChecked(choice_.*field);
    const PaintedMark colors = PaintedColors(Tokens(), kind_, choice_.colors);
    for (const auto& [button, field] : colors_)
        button->SetColor(field == &StoredColors::fore ? colors.text : colors.word);
    sample_->SetChoice(choice_);
}

}  // namespace zorvane
