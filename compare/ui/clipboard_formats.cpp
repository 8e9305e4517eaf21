#include "compare/ui/clipboard_formats.h"

#include "common/ui/qt_text.h"
#include "compare/document/rtf_reader.h"
#include "compare/document/rtf_writer.h"

namespace zorvane {
namespace {

// Names under which programs offer RTF, the usual one first.
constexpr const char* kRtfTypes[] = {"text/rtf", "application/rtf", "text/richtext"};

}  // namespace

std::unique_ptr<QMimeData> MimeOf(const RichText& text) {
    auto data = std::make_unique<QMimeData>();
    const std::string rtf = WriteRtf(text);
    const QByteArray bytes(rtf.data(), static_cast<qsizetype>(rtf.size()));
    data->setData(kRtfTypes[0], bytes);
    data->setData(kRtfTypes[1], bytes);
    QString plain = ToQt(text.text);
    plain.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    plain.replace(u'\v', u'\n');
    plain.replace(QChar(7), u'\t');
    data->setText(plain);
    return data;
}

bool HasText(const QMimeData& data) {
    if (data.hasText())
        return true;
    for (const char* type : kRtfTypes) {
        if (data.hasFormat(type))
            return true;
    }
    return false;
}

std::optional<RichText> RichTextOf(const QMimeData& data) {
    for (const char* type : kRtfTypes) {
        const QByteArray bytes = data.data(type);
        const std::string_view rtf(bytes.constData(), static_cast<std::size_t>(bytes.size()));
        if (!LooksLikeRtf(rtf))
            continue;
        RichText text = ReadRtf(rtf);
        if (!text.Empty())
            return text;
    }
    return std::nullopt;
}

std::u16string PlainTextOf(const QMimeData& data) {
    return FromQt16(data.text());
}

}  // namespace zorvane
