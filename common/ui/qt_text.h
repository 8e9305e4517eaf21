// Texts of the core as Qt's, and back.
#pragma once

#include <string>
#include <string_view>

#include <QString>
#include <QStringView>

namespace zorvane {

/// A byte that is no UTF-8, as in names of files, becomes a lone surrogate of its own; `FromQt`
/// gives it back, so that a path that a window shows is still the path.
QString ToQt(std::string_view utf8);
std::string FromQt(QStringView text);

inline QString ToQt(std::u16string_view text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::u16string FromQt16(QStringView text) {
    return {text.utf16(), static_cast<std::size_t>(text.size())};
}

}  // namespace zorvane
