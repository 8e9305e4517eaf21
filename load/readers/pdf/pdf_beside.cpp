// Source: ISO 32000-1, 12 (annotations), 14.3 (properties).
#include "load/readers/pdf/pdf_beside.h"

#include <Catalog.h>
#include <FileSpec.h>
#include <PDFDocEncoding.h>
#include <Page.h>
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

std::string TextOf(const PdfPicture& picture) {
    const std::string text = "picture " + picture.size;
    return picture.times == 1 ? text : text + ", " + std::to_string(picture.times) + " times";
}

// Of two pages that show it equally often.
std::string KeyOf(const PdfPicture& picture) {
    return picture.digest + " " + std::to_string(picture.times);
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
        sink_.Beside({BesideKind::Object, 0, BesideText(text), pictures_.DigestOf(*stream)});
    }
}

void PdfBeside::Page(std::int32_t number, bool has_text) {
    ::Page* const page = document_.getPage(number);
    if (page == nullptr)
        return;
    page_ = number;
    const std::vector<PdfPicture> pictures = pictures_.Of(*page);
    if (has_text) {
        ++pages_with_text_;
        for (const PdfPicture& picture : pictures)
            Drawn(picture);
    } else if (const std::string digest = ContentDigest(*page, pictures); !digest.empty()) {
        Send(BesideKind::PageWithoutText, pictures.empty() ? "drawing" : "picture", digest);
    }
    if (WasReadInPart(number) || pictures_.InPart())
        Send(BesideKind::DamagedPart, "read in part", BesideDigest("page"));
    const Object annotations = page->getAnnotsObject();
    const int count = annotations.isArray() ? annotations.arrayGetLength() : 0;
    for (int index = 0; index < std::min(count, kMostAnnotations); ++index)
        Annotation(annotations.arrayGet(index));
}

void PdfBeside::Drawn(PdfPicture picture) {
    ++pages_of_[KeyOf(picture)];
    drawn_.push_back({page_, std::move(picture)});
}

// A few times on a page are a thing each; a sign before each line is one.
void PdfBeside::OnPage(const PdfPicture& picture) {
    constexpr std::int32_t kFewTimes = 8;
    if (picture.times > kFewTimes)
        return Send(BesideKind::Picture, TextOf(picture), BesideDigest(KeyOf(picture)));
    for (std::int32_t time = 0; time < picture.times; ++time)
        Send(BesideKind::Picture, "picture " + picture.size, picture.digest);
}

// What most pages show, a logo in their heads, is one thing, so that a page more is none.
void PdfBeside::EndPages() {
    constexpr std::int32_t kFewPages = 3;
    for (const auto& [page, picture] : drawn_) {
        const std::string key = KeyOf(picture);
        const auto pages = pages_of_.find(key);
        if (pages == pages_of_.end())
            continue;  // told with the first page
        const std::int32_t without = pages_with_text_ - pages->second;
        if (pages_with_text_ <= kFewPages || without >= pages->second) {
            page_ = page;
            OnPage(picture);
            continue;
        }
        const std::string place =
            without == 0 ? "all pages" : "all pages but " + std::to_string(without);
        sink_.Beside({BesideKind::Picture, 0, BesideText(place + ": " + TextOf(picture)),
                      BesideDigest(key + place)});
        pages_of_.erase(pages);
    }
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

// Empty for a page on which nothing is drawn.
std::string PdfBeside::ContentDigest(::Page& page, const std::vector<PdfPicture>& pictures) {
    Object contents = page.getContents();
    std::string parts;
    if (contents.isStream()) {
        parts = pictures_.DigestOf(contents);
    } else if (contents.isArray()) {
        constexpr int kMostParts = 1000;
        for (int index = 0; index < std::min(contents.arrayGetLength(), kMostParts); ++index) {
            Object part = contents.arrayGet(index);
            if (part.isStream())
                parts += pictures_.DigestOf(part);
        }
    }
    const bool nothing = parts.empty() || parts == BesideDigest("");
    if (nothing && pictures.empty())
        return {};
    for (const PdfPicture& picture : pictures)
        parts += picture.digest;
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
        beside.EndPages();
    } catch (const std::bad_alloc&) {
        return ReadEnd::Fault(ReadError::TooLarge, "the PDF file needs too much memory");
    }
    return ReadEnd::Ok();
}

}  // namespace zorvane
