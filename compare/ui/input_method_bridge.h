// Between an input method (Chinese, Japanese, dead keys...) and a document. What is being composed
// stands in the layout alone; the document gets what is committed.
#pragma once

#include <QInputMethodEvent>
#include <QVariant>

#include "compare/ui/view_page.h"

namespace zorvane {

class InputMethodBridge {
  public:
    explicit InputMethodBridge(ViewPage& page) : page_(page) {}

    /// Carries out an event.
    void Handle(const QInputMethodEvent& event);
    bool IsComposing() const { return page_.Layouts().HasPreedit(); }
    /// Takes the composed text out of the layout; the input method is told by whoever calls.
    void Cancel();
    /// Caret rectangles are made by the view, which knows the widget's coordinates.
    QVariant Answer(Qt::InputMethodQuery query) const;

  private:
    void Commit(const QInputMethodEvent& event);

    ViewPage& page_;
};

}  // namespace zorvane
