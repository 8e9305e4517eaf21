#include "common/ui/qt_text.h"

#include <algorithm>

#include "common/base/text_bytes.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

// Where text has no business, half of the surrogates that never begin a pair: a byte from 0x80 on
// is the one with its number behind these.
constexpr char16_t kFirst = 0xDC00;
constexpr char16_t kOfByte80 = 0xDC80;
constexpr char16_t kOfByteFF = 0xDCFF;

QString Decoded(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

bool StandsForByte(QChar unit) {
    return unit.unicode() >= kOfByte80 && unit.unicode() <= kOfByteFF;
}

}  // namespace

QString ToQt(std::string_view utf8) {
    if (IsValidUtf8(utf8))
        return Decoded(utf8);
    QString text;
    while (!utf8.empty()) {
        const std::size_t length = FirstCharacter(utf8);
        if (length > 0)
            text += Decoded(utf8.substr(0, length));
        else
            text += QChar(static_cast<char16_t>(kFirst + static_cast<unsigned char>(utf8.front())));
        utf8.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return text;
}

std::string FromQt(QStringView text) {
    if (text.isValidUtf16()) {
        const QByteArray bytes = text.toUtf8();
        return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
    }
    std::string bytes;
    for (qsizetype at = 0; at < text.size();) {
        const bool pair =
            text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        const qsizetype units = pair ? 2 : 1;
        if (!pair && StandsForByte(text[at]))
            bytes += static_cast<char>(text[at].unicode() - kFirst);
        else
            bytes += text.mid(at, units).toUtf8().toStdString();
        at += units;
    }
    return bytes;
}

}  // namespace zorvane
