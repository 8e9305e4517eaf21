// Every text on a window passes here.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include <QString>

#include "common/ui/qt_text.h"

namespace zorvane {

/// English in, the text to show out. Holds the translator's one function, so that a window can be
/// made in a test without a language.
class UiText {
  public:
    using Function = std::function<std::string(std::string_view)>;

    UiText() = default;
    explicit UiText(Function translate) : translate_(std::move(translate)) {}

    QString operator()(std::string_view english) const {
        return translate_ ? ToQt(translate_(english)) : ToQt(english);
    }

  private:
    Function translate_;
};

/// `text` without the marks of its mnemonic: "Find && &Replace" is "Find & Replace". The form
/// "(&F)" that Chinese and Japanese captions end in goes as a whole.
QString WithoutMnemonic(const QString& text);
/// The letter behind the mark in upper case, a null character without one.
QChar MnemonicOf(const QString& text);

}  // namespace zorvane
