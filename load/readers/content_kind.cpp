#include "load/readers/content_kind.h"

#include <algorithm>
#include <array>

#include "common/base/text_encoding.h"
#include "load/file_types.h"
#include "load/readers/container/compound_file.h"
#include "load/readers/container/decrypt.h"

namespace zorvane {
namespace {

TextForm FormNamed(std::string_view name) {
    const FileType* type = TypeNamed(name);
    return type == nullptr ? TextForm::None : type->form;
}

ContentKind KindOfOpenDocument(std::string_view type) {
    if (type.find("spreadsheet") != std::string_view::npos)
        return ContentKind::OpenSheet;
    if (type.find("presentation") != std::string_view::npos)
        return ContentKind::OpenSlides;
    return ContentKind::OpenText;
}

// The first that fits tells what a package is: a part of its content types, then a part.
struct KindRow {
    std::string_view name;
    ContentKind kind;
};
constexpr KindRow kKindsByType[] = {{"wordprocessingml.", ContentKind::WordPackage},
                                    {"ms-word.", ContentKind::WordPackage},
                                    {"presentationml.", ContentKind::SlidePackage},
                                    {"spreadsheetml.", ContentKind::SheetPackage},
                                    {"ms-excel.", ContentKind::SheetPackage}};
constexpr KindRow kKindsByPart[] = {{"word/document.xml", ContentKind::WordPackage},
                                    {"ppt/presentation.xml", ContentKind::SlidePackage},
                                    {"xl/workbook.xml", ContentKind::SheetPackage},
                                    {"xl/workbook.bin", ContentKind::SheetPackage},
                                    {"content.xml", ContentKind::OpenText}};

ContentKind KindOfPackage(Package& package) {
    if (const auto type = package.Read("mimetype")) {
        if (type->find("epub") != std::string::npos)
            return ContentKind::Epub;
        if (type->find("opendocument") != std::string::npos)
            return KindOfOpenDocument(*type);
    }
    if (package.Has("META-INF/container.xml"))
        return ContentKind::Epub;
    if (const auto types = package.Read("[Content_Types].xml")) {
        for (const KindRow& row : kKindsByType) {
            if (types->find(row.name) != std::string::npos)
                return row.kind;
        }
    }
    for (const KindRow& row : kKindsByPart) {
        if (package.Has(row.name))
            return row.kind;
    }
    return ContentKind::OtherPackage;
}

ContentKind KindOfCompound(std::string_view bytes) {
    const std::optional<CompoundFile> file = CompoundFile::Open(bytes);
    if (!file)
        return ContentKind::OtherCompound;
    if (file->Has("EncryptedPackage"))
        return ContentKind::EncryptedPackage;
    if (file->Has("WordDocument"))
        return ContentKind::BinaryWord;
    if (file->Has("Workbook") || file->Has("Book"))
        return ContentKind::BinarySheet;
    if (file->Has("PowerPoint Document"))
        return ContentKind::BinarySlides;
    return ContentKind::OtherCompound;
}

// Text may hold a stray NUL; bytes that are no text are full of control characters.
bool IsBinary(std::string_view bytes) {
    constexpr std::ptrdiff_t kTextPerControl = 32;
    const std::string_view head = bytes.substr(0, kSignatureReach);
    if (head.find('\0') == std::string_view::npos || LooksLikeUtf16(bytes))
        return false;
    const auto controls = std::count_if(head.begin(), head.end(), [](char character) {
        constexpr std::string_view kOfText = "\t\n\r\f\v\x1B";
        return static_cast<unsigned char>(character) < 0x20 &&
               kOfText.find(character) == std::string_view::npos;
    });
    return controls * kTextPerControl > static_cast<std::ptrdiff_t>(head.size());
}

// A root element or a document type that says HTML, an XML declaration in front or not.
bool SaysHtml(std::string_view text) {
    const std::string lower = ToLower(text.substr(0, 2048));
    for (const std::string_view sign : {"<html", "<!doctype html", "<head", "<body"}) {
        if (lower.find(sign) != std::string::npos)
            return true;
    }
    return false;
}

// Source code of a page: what a page shows of it is not what changes in it.
bool IsScript(std::string_view text) {
    return text.starts_with("<?php") || text.starts_with("<?=") || text.starts_with("<%");
}

// The begin in UTF-8, without what may stand in front of a tag.
std::string HeadOfText(std::string_view bytes) {
    std::string_view head = bytes.substr(0, 4096);
    std::string decoded;
    if (LooksLikeUtf16(bytes)) {
        decoded = ToUtf8(DecodeText(head, DetectEncoding(head, "UTF-16LE")));
        head = decoded;
    }
    if (head.starts_with("\xEF\xBB\xBF"))
        head.remove_prefix(3);
    return std::string(Trim(head));
}

ContentKind KindOfText(std::string_view bytes, bool tagged, TextForm form) {
    if (form == TextForm::Markdown)
        return ContentKind::Markdown;
    if (form == TextForm::Message)
        return ContentKind::Message;
    const std::string head = HeadOfText(bytes);
    if (IsScript(head))
        return ContentKind::Text;
    if (tagged && SaysHtml(head))
        return ContentKind::Html;
    if (form == TextForm::Xml || (tagged && head.starts_with("<?xml")))
        return ContentKind::Xml;
    return form == TextForm::Page || tagged ? ContentKind::Html : ContentKind::Text;
}

}  // namespace

ContentKind KindOfContent(std::string_view bytes, std::string_view name,
                          std::unique_ptr<Package>& package) {
    const TextForm form = FormNamed(name);
    const Signature signature = SignatureOf(bytes);
    switch (signature) {
        case Signature::Package:
            package = Package::Open(bytes);
            return package ? KindOfPackage(*package) : ContentKind::BrokenPackage;
        case Signature::Compound:
            return KindOfCompound(bytes);
        case Signature::SheetStream:
            return ContentKind::BinarySheet;
        case Signature::RichText:
            return ContentKind::Rtf;
        case Signature::Pdf:
            return ContentKind::Pdf;
        default:
            break;
    }
    // A message may carry its attachments as bytes.
    if (IsBinary(bytes) && form != TextForm::Message)
        return ContentKind::OtherBinary;
    return KindOfText(bytes, signature == Signature::Markup, form);
}

}  // namespace zorvane
