// Source: ISO 32000-1, 7 (streams), 8 (graphics), 12 (annotations), 14.3 (properties).
#include "load/readers/pdf/pdf_beside.h"

#include <Catalog.h>
#include <FileSpec.h>
#include <PDFDocEncoding.h>
#include <Page.h>
#include <Stream.h>
#include <algorithm>
#include <array>
#include <utility>

#include "common/base/text_bytes.h"
#include "common/base/text_encoding.h"
#include "load/readers/pdf/pdf_document.h"
#include "load/readers/pdf/pdf_reader.h"

namespace zorvane {
namespace {

constexpr int kMostAnnotations = 10'000;  // of a page
constexpr int kMostFiles = 1000;
constexpr int kMostForms = 200;  // looked into for one page
constexpr int kDeepestForm = 8;
constexpr std::int64_t kMostPictureBytes = std::int64_t{64} << 20;

// A text string: UTF-16 behind a mark, UTF-8 behind another, else the format's own encoding.
std::string TextOf(const std::string& bytes) {
    if (bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE"))
        return ToUtf8(DecodeText(bytes, DetectEncoding(bytes, "UTF-8")));
    if (bytes.starts_with("\xEF\xBB\xBF"))
        return bytes.substr(3);
    std::string text;
    for (const char byte : bytes) {
        if (const Unicode letter = pdfDocEncoding[static_cast<unsigned char>(byte)]; letter != 0)
            AppendUtf8(static_cast<char32_t>(letter), text);
    }
    return text;
}

std::string TextOf(const Object& value) {
    return value.isString() ? TextOf(value.getString()->toStr()) : std::string();
}

bool IsMarkup(const Object& subtype) {
    constexpr std::array<const char*, 9> kNames = {"Text",      "FreeText", "Highlight",
                                                   "Underline", "Squiggly", "StrikeOut",
                                                   "Stamp",     "Caret",    "Ink"};
    return std::any_of(kNames.begin(), kNames.end(),
                       [&subtype](const char* name) { return subtype.isName(name); });
}

}  // namespace

void PdfBeside::Send(BesideKind kind, std::string_view text, std::string digest) {
    const std::string placed = "page " + std::to_string(page_) + ": " + std::string(text);
    sink_.Beside({kind, 0, BesideText(placed), std::move(digest)});
}

void PdfBeside::Info(const char* key, std::string_view name) {
    const std::unique_ptr<GooString> value = document_.getDocInfoStringEntry(key);
    if (!value)
        return;
    if (const auto item = MakeMetadata(name, TextOf(value->toStr())))
        sink_.Beside(*item);
}

void PdfBeside::Document() {
    Info("Title", "title");
    Info("Author", "author");
    Info("Subject", "subject");
    Info("Keywords", "keywords");
    EmbeddedFiles();
}

void PdfBeside::EmbeddedFiles() {
    Catalog* const catalog = document_.getCatalog();
    const int count = catalog == nullptr ? 0 : std::min(catalog->numEmbeddedFiles(), kMostFiles);
    for (int index = 0; index < count; ++index) {
        const std::unique_ptr<FileSpec> file = catalog->embeddedFile(index);
        if (!file || !file->isOk() || file->getEmbeddedFile() == nullptr)
            continue;
        const GooString* const name = file->getFileName();
        Object* const stream = file->getEmbeddedFile()->streamObject();
        if (stream == nullptr || !stream->isStream())
            continue;
        const std::string text = name == nullptr ? std::string("file") : TextOf(name->toStr());
        sink_.Beside({BesideKind::Object, 0, BesideText(text), DigestOf(*stream)});
    }
}

void PdfBeside::Page(std::int32_t number, bool has_text) {
    ::Page* const page = document_.getPage(number);
    if (page == nullptr)
        return;
    page_ = number;
    page_pictures_.clear();
    picture_in_part_ = false;
    forms_left_ = kMostForms;
    silent_ = !has_text;
    Pictures(page->getResourceDict(), 0);
    if (!has_text) {
        const std::string digest = ContentDigest(*page);
        if (!digest.empty())
            Send(BesideKind::PageWithoutText, page_pictures_.empty() ? "drawing" : "picture",
                 digest);
    }
    if (WasReadInPart(number) || picture_in_part_)
        Send(BesideKind::DamagedPart, "read in part", BesideDigest("page"));
    const Object annotations = page->getAnnotsObject();
    const int count = annotations.isArray() ? annotations.arrayGetLength() : 0;
    for (int index = 0; index < std::min(count, kMostAnnotations); ++index)
        Annotation(annotations.arrayGet(index));
}

void PdfBeside::Annotation(const Object& annotation) {
    if (!annotation.isDict())
        return;
    const Object subtype = annotation.dictLookup("Subtype");
    if (subtype.isName("Link"))
        return Link(annotation.dictLookup("A"));
    const std::string contents = TextOf(annotation.dictLookup("Contents"));
    if (subtype.isName("FileAttachment")) {
        Send(BesideKind::Object, contents.empty() ? "file" : contents, BesideDigest(contents));
    } else if (IsMarkup(subtype) && !contents.empty()) {
        const std::string author = TextOf(annotation.dictLookup("T"));
        const std::string text = author.empty() ? contents : author + ": " + contents;
        Send(BesideKind::Comment, text, BesideDigest(text));
    }
}

void PdfBeside::Link(const Object& action) {
    if (!action.isDict())
        return;
    std::string target = TextOf(action.dictLookup("URI"));
    if (target.empty())
        target = TextOf(action.dictLookup("F"));
    if (!target.empty())
        Send(BesideKind::Link, target, BesideDigest(target));
}

// Pictures may lie in forms, which may lie in forms.
void PdfBeside::Pictures(Dict* resources, int depth) {
    if (resources == nullptr || depth > kDeepestForm)
        return;
    const Object objects = resources->lookup("XObject");
    if (!objects.isDict())
        return;
    for (int index = 0; index < objects.dictGetLength(); ++index) {
        const Object& reference = objects.getDict()->getValNF(index);
        Object object = objects.dictGetVal(index);
        if (!object.isStream() || !reference.isRef())
            continue;
        const Object subtype = object.streamGetDict()->lookup("Subtype");
        if (subtype.isName("Image")) {
            Picture(object, reference.getRef().num);
        } else if (subtype.isName("Form") && --forms_left_ >= 0) {
            Object inner = object.streamGetDict()->lookup("Resources");
            if (inner.isDict())
                Pictures(inner.getDict(), depth + 1);
        }
    }
}

// Pages share what a resource list of the whole document names, so each picture is told once.
void PdfBeside::Picture(Object& stream, int number) {
    const auto [digest, fresh] = digests_.try_emplace(number);
    if (fresh)
        digest->second = DigestOf(stream);
    page_pictures_.push_back(digest->second);
    if (silent_ || !first_pages_.try_emplace(number, page_).second)
        return;
    const auto size = [&stream](const char* key) {
        const Object value = stream.streamGetDict()->lookup(key);
        return value.isInt() ? std::to_string(value.getInt()) : std::string("?");
    };
    Send(BesideKind::Picture, "picture " + size("Width") + " x " + size("Height"), digest->second);
}

// Of the bytes as the file holds them, decrypted but not unpacked.
std::string PdfBeside::DigestOf(Object& stream) {
    Stream* const bytes = stream.getStream()->getUndecodedStream();
    BesideHash hash;
    std::array<unsigned char, 4096> buffer{};
    bytes->reset();
    std::int64_t left = std::min(bytes_left_, kMostPictureBytes);
    while (left > 0) {
        const int got = bytes->doGetChars(static_cast<int>(buffer.size()), buffer.data());
        if (got <= 0)
            break;
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
        hash.Add({reinterpret_cast<const char*>(buffer.data()), static_cast<std::size_t>(got)});
        left -= got;
        bytes_left_ -= got;
    }
    bytes->close();
    picture_in_part_ = picture_in_part_ || left <= 0;
    return hash.Digest();
}

// Empty for a page on which nothing is drawn.
std::string PdfBeside::ContentDigest(::Page& page) {
    Object contents = page.getContents();
    std::string parts;
    if (contents.isStream()) {
        parts = DigestOf(contents);
    } else if (contents.isArray()) {
        constexpr int kMostParts = 1000;
        for (int index = 0; index < std::min(contents.arrayGetLength(), kMostParts); ++index) {
            Object part = contents.arrayGet(index);
            if (part.isStream())
                parts += DigestOf(part);
        }
    }
    const bool nothing = parts.empty() || parts == BesideDigest("");
    if (nothing && page_pictures_.empty())
        return {};
    for (const std::string& picture : page_pictures_)
        parts += picture;
    return BesideDigest(parts);
}

ReadEnd ReadPdfBeside(std::string_view bytes, const PdfPasswords& passwords, const PdfPages& pages,
                      std::string_view text, DocumentSink& sink) {
    ReadEnd end;
    const PdfFile file = OpenPdfForText(bytes, passwords, end);
    if (!file.document)
        return end;
    try {
        PdfBeside beside(*file.document, sink);
        beside.Document();
        const PdfPages within = PagesWithin(pages, file.document->getNumPages());
        for (std::int32_t page = within.first; page <= within.last; ++page) {
            const std::size_t feed = std::min(text.find('\f'), text.size());
            beside.Page(page, !Trim(text.substr(0, feed)).empty());
            text.remove_prefix(std::min(feed + 1, text.size()));
        }
    } catch (const std::bad_alloc&) {
        return ReadEnd::Fault(ReadError::TooLarge, "the PDF file needs too much memory");
    }
    return ReadEnd::Ok();
}

}  // namespace zorvane
