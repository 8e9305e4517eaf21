// The card that stands in place of a result without differences: what is equal, and what the
// verdict does not speak of.
#pragma once

#include <functional>

#include "common/ui/cards.h"
#include "common/ui/ui_text.h"
#include "compare/engine/comparison.h"

namespace zorvane {

struct Verdict {
    bool both_empty = false;
    bool identical = false;  ///< byte for byte
    int paragraphs = 0;      ///< that were compared
    int not_counted = 0;     ///< differences of kinds that are left out
    QStringList kinds_out;   ///< those kinds, in words
    std::vector<const BesideNote*> beside{};
    QStringList not_compared;
};

/// What the buttons of its lines do.
struct VerdictSteps {
    std::function<void()> count_them;
    std::function<void()> show_panel;
};

/// Without a parent; three lines at most, each with its button.
Card* MakeVerdictCard(const Verdict& verdict, const UiText& text, const VerdictSteps& steps);

/// What is told of a side that could not be read, and what can be done.
struct UnreadSteps {
    std::function<void()> choose_another;
    std::function<void()> type_options;  ///< empty: this type has none
    std::function<void()> try_again;
    /// Set for a protected document that a password opens.
    std::function<void(const QString& password)> open_with;
    bool wrong_password = false;  ///< one was given before
};
Card* MakeUnreadCard(const QString& reason, const UiText& text, const UnreadSteps& steps);
/// Asks for the password in a field, which is for the focus.
Card* MakePasswordCard(const UiText& text, const UnreadSteps& steps);

}  // namespace zorvane
