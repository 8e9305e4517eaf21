// The two texts that a person edits, in the columns of the result below them.
#pragma once

#include <QWidget>

#include "common/base/side.h"
#include "compare/ui/rich_text_view.h"
#include "compare/ui/view_colors.h"

namespace zorvane {

class EditorPair : public QWidget {
  public:
    /// The documents are borrowed and outlive this.
    EditorPair(RichDocument& original, RichDocument& modified, QWidget* parent);

    RichTextView& View(Side side) { return *views_[side]; }
    void SetColors(const ViewColors& colors);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    PerSide<RichTextView*> views_;
};

}  // namespace zorvane
