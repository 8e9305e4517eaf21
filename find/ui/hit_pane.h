// The lower half of a Find window: which hit is shown, and the lines around it.
#pragma once

#include <functional>

#include <QFrame>
#include <QLabel>
#include <QStackedWidget>

#include "common/ui/buttons.h"
#include "common/ui/ui_text.h"
#include "compare/document/rich_document.h"
#include "compare/ui/rich_text_view.h"
#include "find/find_viewer.h"

namespace zorvane {

/// What the segments of the head show.
enum class HitFace : std::int32_t { Lines, Document };

/// Where lines stand in their file, and which one holds the hit.
class LineMarks : public MarkSource {
  public:
    void Set(std::int64_t first_line, std::int32_t marked) {
        first_line_ = first_line;
        marked_ = marked;
    }
    ParagraphMark Of(ParagraphNumber paragraph) const override;
    std::vector<WordMark> Words(ParagraphNumber) const override { return {}; }
    std::array<std::int32_t, 2> Numbers(ParagraphNumber paragraph) const override;

  private:
    std::int64_t first_line_ = 1;
    std::int32_t marked_ = -1;  // from 0
};

class HitPane : public QFrame {
    Q_OBJECT
  public:
    HitPane(frmFindTextInFiles& viewer, UiText text, QWidget* parent);
    ~HitPane() override;

    /// Another hit: its head at once, the lines when they are there.
    void ShowHead();
    void ShowLines();
    void ShowMessage(const QString& words);
    /// Reading takes its time.
    void ShowReading();
    /// Font, colours and wrap as they are now.
    void ShowLook();
    void SetZoom(double zoom);
    void SetWrap(bool wrap);
    /// The one that is shown: lines, or the whole document.
    RichTextView& View() { return ShowsDocument() ? *whole_view_ : *view_; }
    bool ShowsDocument() const;
    void ShowFace();
    /// The lines around the hit, or its whole document.
    SegmentedGroup& Faces() { return *faces_; }
    /// What stands there in place of lines; empty: lines do.
    QString Message() const;

    /// Buttons of the head mean the hit that it names, whatever row is chosen.
    std::function<void()> open_wanted;
    std::function<void()> compare_wanted;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QWidget* MakeHead();
    RichTextView* MakeView(RichDocument& document, const QString& name);
    void ShowDocument();
    void FillLines();
    CharFormat LineFormat() const;
    void MarkItem(const ContextRows& rows);
    void ShowPlace();

    frmFindTextInFiles& viewer_;
    UiText text_;
    RichDocument document_;
    RichDocument whole_;
    const HitDocument* in_whole_ = nullptr;  ///< what `whole_` holds
    LineMarks marks_;
    QLabel* name_ = nullptr;
    QLabel* place_ = nullptr;
    QString place_words_;
    Button* compare_ = nullptr;
    Button* open_ = nullptr;
    QStackedWidget* body_ = nullptr;
    RichTextView* view_ = nullptr;
    RichTextView* whole_view_ = nullptr;
    SegmentedGroup* faces_ = nullptr;
    QLabel* message_ = nullptr;
};

}  // namespace zorvane
