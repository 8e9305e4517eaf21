// EPUB, by the public description EPUB 3.3: a container names a package document, whose spine
// names the chapters in reading order.
#include <algorithm>
#include <unordered_map>
#include <vector>

#include "load/readers/beside/package_beside.h"
#include "load/readers/container/xml_part.h"
#include "load/readers/mail/mime.h"
#include "load/readers/web/html_reader.h"
#include "load/readers/word_readers.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostChapters = 10'000;

// "a%20b.xhtml#part" names the part "a b.xhtml".
std::string PathOf(std::string_view address) {
    return DecodePercent(address.substr(0, address.find('#')));
}

bool IsPage(std::string_view media_type) {
    return media_type == "application/xhtml+xml" || media_type == "text/html" ||
           media_type == "application/x-dtbook+xml";
}

// Address of the package document; empty without one.
std::string PackageDocument(Package& package) {
    XmlPart container;
    if (!XmlPart::Read(package, "META-INF/container.xml", container).ok())
        return {};
    for (const pugi::xml_node& file : Child(container.Root(), "rootfiles").children()) {
        if (Is(file, "rootfile"))
            return PathOf(Attribute(file, "full-path"));
    }
    return {};
}

std::vector<std::string> Chapters(const pugi::xml_node& root, const std::string& document) {
    std::unordered_map<std::string, std::string> pages;
    for (const pugi::xml_node& item : Child(root, "manifest").children()) {
        if (IsPage(Attribute(item, "media-type")))
            pages.emplace(Attribute(item, "id"),
                          ResolvePart(document, PathOf(Attribute(item, "href"))));
    }
    std::vector<std::string> chapters;
    for (const pugi::xml_node& reference : Child(root, "spine").children()) {
        const auto page = pages.find(std::string(Attribute(reference, "idref")));
        const bool aside = Attribute(reference, "linear") == "no";
        if (page != pages.end() && !aside && chapters.size() < kMostChapters)
            chapters.push_back(page->second);
    }
    return chapters;
}

// One chapter's progress as that of the whole book.
class ChapterMonitor : public ReadMonitor {
  public:
    ChapterMonitor(ReadMonitor& whole, std::size_t chapters)
        : whole_(whole), total_(static_cast<std::int64_t>(chapters) * kParts) {}
    void Next() { begin_ += kParts; }
    bool Progress(std::int64_t done, std::int64_t total) override {
        return whole_.Progress(begin_ + done * kParts / std::max<std::int64_t>(total, 1), total_);
    }

  private:
    static constexpr std::int64_t kParts = 1000;  // of a chapter

    ReadMonitor& whole_;
    std::int64_t begin_ = 0;
    std::int64_t total_;
};

// A part that is not there is no fault of the others: `WrongFormat`.
ReadEnd ShowChapter(PartDigests& digests, const std::string& chapter, DocumentSink& sink,
                    ReadMonitor& monitor) {
    if (!monitor.Progress(0, 1))
        return ReadEnd::Fault(ReadError::Cancelled);
    ReadError error = ReadError::None;
    const std::optional<std::string> page = digests.Parts().Read(chapter, &error);
    if (!page)
        return ReadEnd::Fault(error, "cannot read the part " + chapter);
    const auto digest_of = [&](std::string_view address) {
        const std::string part = ResolvePart(chapter, PathOf(address));
        return digests.Parts().Has(part) ? digests.Of(part) : std::string();
    };
    return ShowHtml(HtmlAsUtf8(*page, "UTF-8"), HtmlSyntax::Xhtml, sink, monitor, digest_of);
}

}  // namespace

ReadEnd ReadEpub(Package& package, DocumentSink& sink, ReadMonitor& monitor) {
    const std::string document = PackageDocument(package);
    if (document.empty())
        return ReadEnd::Fault(ReadError::WrongFormat, "no META-INF/container.xml in the package");
    if (package.Has("META-INF/encryption.xml") && package.Has("META-INF/rights.xml"))
        return ReadEnd::Fault(ReadError::Unsupported, "the book is protected");
    XmlPart opf;
    if (ReadEnd end = XmlPart::Read(package, document, opf); !end.ok())
        return end;
    const std::vector<std::string> chapters = Chapters(opf.Root(), document);
    ReportDublinCore(Child(opf.Root(), "metadata"), sink);
    PartDigests digests(package);
    std::size_t missing = 0;
    ChapterMonitor progress(monitor, chapters.size());
    for (const std::string& chapter : chapters) {
        ReadEnd end = ShowChapter(digests, chapter, sink, progress);
        if (!end.ok() && end.error != ReadError::WrongFormat)
            return end;
        if (!end.ok()) {
            package.TellDamage(chapter);
            ++missing;
        }
        progress.Next();
    }
    if (chapters.empty() || missing == chapters.size())
        return ReadEnd::Fault(ReadError::Damaged, "the book names no chapter that is there");
    ReportDamage(package, sink);
    return ReadEnd::Ok();
}

}  // namespace zorvane
