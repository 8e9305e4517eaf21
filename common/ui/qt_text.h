// Texts of the core as Qt's, and back.
#pragma once

#include <string>
#include <string_view>

#include <QString>
#include <QStringView>

namespace zorvane {

/// Invalid UTF-8 becomes U+FFFD.
inline QString ToQt(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

inline QString ToQt(std::u16string_view text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string FromQt(QStringView text) {
    const QByteArray bytes = text.toUtf8();
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

inline std::u16string FromQt16(QStringView text) {
    return {text.utf16(), static_cast<std::size_t>(text.size())};
}

}  // namespace zorvane
