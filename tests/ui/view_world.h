// Documents and views for tests of the text view.
#pragma once

#include <memory>
#include <string>

#include <QApplication>
#include <QKeyEvent>

#include "compare/engine/compare_texts.h"
#include "compare/ui/compare_pane.h"

namespace zorvane {

/// A view of a text, shown without a display.
struct ShownView {
    explicit ShownView(const RichText& text, int width = 500, int height = 400) {
        document.SetRich(text);
        view.resize(width, height);
        view.show();
        QApplication::processEvents();
    }
    explicit ShownView(std::u16string_view text, int width = 500, int height = 400)
        : ShownView(RichText::Plain(text), width, height) {}

    void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {}) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
        QApplication::sendEvent(&view, &event);
    }
    void Type(const QString& text) { Key(0, Qt::NoModifier, text); }
    CharPos Caret() const { return document.Caret().Caret(); }

    RichDocument document;
    RichTextView view{document};
};

/// Both sides of a compare in a pane.
struct ShownPair {
    ShownPair(const RichText& one, const RichText& other, int width = 1000, int height = 600) {
        original.SetRich(one);
        modified.SetRich(other);
        Compare();
        pane.resize(width, height);
        pane.show();
        QApplication::processEvents();
    }
    void Compare() {
        Result<Comparison> result =
            CompareTexts({std::make_shared<const std::u16string>(original.Text()),
                          std::make_shared<const std::u16string>(modified.Text())},
                         CompareOptions(), nullptr);
        comparison = std::make_shared<const Comparison>(std::move(result).value());
        pane.SetComparison(comparison);
    }
    ViewPage& Page(Side side) { return pane.View(side).Page(); }

    RichDocument original;
    RichDocument modified;
    std::shared_ptr<const Comparison> comparison;
    ComparePane pane{original, modified};
};

inline std::u16string Wide(std::string_view text) {
    return {text.begin(), text.end()};
}

}  // namespace zorvane
