// What this program is, and what it runs on.
#pragma once

#include <QString>
#include <QWidget>

#include "common/ui/ui_text.h"

namespace zorvane {

struct AboutFacts {
    QString version{};
    QString system{};         ///< in words
    QString settings_file{};  ///< empty: settings are not kept
};

/// Shows them and waits.
void ShowAbout(const AboutFacts& facts, const UiText& text, QWidget* parent);

}  // namespace zorvane
