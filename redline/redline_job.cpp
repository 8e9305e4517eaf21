#include "redline/redline_job.h"

#include <algorithm>

#include "common/base/text_encoding.h"
#include "common/platform/freed_memory.h"
#include "compare/document/rtf_reader.h"
#include "load/readers/content_kind.h"
#include "load/readers/sink/document_sink.h"
#include "load/readers/word_job.h"
#include "load/redline_certificate.h"
#include "redline/document_layout.h"
#include "redline/docx_redline.h"
#include "redline/new_document.h"
#include "redline/odt_redline.h"
#include "redline/verify.h"

namespace zorvane {
namespace {

// Writing is the first half, the check the second. What the engine tells of single compares counts
// for nothing: there are thousands of them.
class MonitorWatcher : public RunWatcher {
  public:
    explicit MonitorWatcher(ReadMonitor& monitor) : monitor_(monitor) {}
    bool KeepGoing() override {
        cancelled_ = cancelled_ || !monitor_.Progress(done_, kWhole);
        return !cancelled_;
    }
    void Progress(RunStep step, double part) override {
        if (step != RunStep::WriteReport)
            return;
        const auto half = static_cast<std::int64_t>(part * kWhole / 2);
        done_ = std::max(done_, half + (checking_ ? kWhole / 2 : 0));
        static_cast<void>(KeepGoing());
    }
    void BeginCheck() { checking_ = true; }
    bool Cancelled() const { return cancelled_; }

  private:
    static constexpr std::int64_t kWhole = 100'000;
    ReadMonitor& monitor_;
    std::int64_t done_ = 0;
    bool checking_ = false;
    bool cancelled_ = false;
};

struct Asked {
    bool open_document = false;
    bool laid_out = false;
    bool track_formatting = false;
};

CountsOf<ReadingCount> ReadingCountsOf(const ReadCounts& read) {
    CountsOf<ReadingCount> counts;
    counts[ReadingCount::Paragraphs] = read.paragraphs;
    counts[ReadingCount::Tables] = read.tables;
    counts[ReadingCount::Rows] = read.rows;
    counts[ReadingCount::Cells] = read.cells;
    counts[ReadingCount::Notes] = read.notes;
    counts[ReadingCount::Headers] = read.headers;
    return counts;
}

CountsOf<MarkCount> MarkCountsOf(const RedlineCounts& written) {
    CountsOf<MarkCount> counts;
    counts[MarkCount::Insertions] = written.insertions;
    counts[MarkCount::Deletions] = written.deletions;
    counts[MarkCount::ParagraphMarks] = written.paragraph_marks;
    counts[MarkCount::Rows] = written.rows;
    counts[MarkCount::Moves] = written.moves;
    counts[MarkCount::Notes] = written.notes;
    counts[MarkCount::PropertyChanges] = written.properties;
    return counts;
}

RedlineCertificate Certify(const PerSide<std::string_view>& documents, const Asked& asked,
                           const WrittenRedline& written, const Verified* verified) {
    RedlineCertificate certificate;
    certificate.verified = verified != nullptr;
    certificate.open_document = asked.open_document;
    certificate.laid_out = asked.laid_out;
    certificate.formatting = asked.track_formatting;
    certificate.original_sha256 = HexDigest(documents.original);
    certificate.modified_sha256 = HexDigest(documents.modified);
    certificate.redline_sha256 = HexDigest(written.bytes);
    certificate.marks = MarkCountsOf(written.counts);
    if (verified != nullptr) {
        certificate.accepted = ReadingCountsOf(verified->accepted);
        certificate.rejected = ReadingCountsOf(verified->rejected);
    }
    certificate.untracked = written.untracked;
    certificate.resolved_before = written.resolved_before;
    return certificate;
}

RedlineRequest RequestOf(const ConversionMessage& job) {
    RedlineRequest request;
    if (!TextOf(job, "author").empty())
        request.author = TextOf(job, "author");
    if (!TextOf(job, "date").empty())
        request.date = TextOf(job, "date");
    request.id_prefix = static_cast<std::int32_t>(NumberOf(job, "idprefix"));
    request.track_formatting = IsSet(job, "formatting");
    request.keep_tracked = IsSet(job, "keeptracked");
    return request;
}

// Packages whose marks can be read; a password opens neither.
bool IsPackageOf(std::string_view bytes, bool open_document) {
    std::unique_ptr<Package> package;
    const ContentKind wanted = open_document ? ContentKind::OpenText : ContentKind::WordPackage;
    if (KindOfContent(bytes, "", package) != wanted || !package || package->Encrypted())
        return false;
    return !open_document || package->Read("META-INF/manifest.xml")
                                     .value_or("encryption-data")
                                     .find("encryption-data") == std::string::npos;
}

// Tells generated numbers from letters.
class LabelSink : public DocumentSink {
  public:
    explicit LabelSink(DocumentSink& sink) : sink_(sink) {}
    void BeginParagraph(const ParagraphFormat& format) override { sink_.BeginParagraph(format); }
    void Text(std::string_view utf8, const CharFormat& format) override {
        sink_.Text(utf8, format);
    }
    void ListLabel(std::string_view utf8, const CharFormat& format) override {
        std::u16string label = ToUtf16(utf8);
        label.insert(label.begin(), kLabelBegin);
        label += kLabelEnd;
        sink_.Text(ToUtf8(label), format);
    }
    void EndParagraph() override { sink_.EndParagraph(); }
    std::size_t Size() const override { return sink_.Size(); }
    std::string Finish() override { return sink_.Finish(); }

  private:
    DocumentSink& sink_;
};

// Where a compare of the document itself leaves generated numbers out. In other formats they are
// letters of the text.
bool HasLists(std::string_view bytes, std::string_view name) {
    std::unique_ptr<Package> package;
    switch (KindOfContent(bytes, name, package)) {
        case ContentKind::WordPackage:
        case ContentKind::SlidePackage:
        case ContentKind::OpenText:
        case ContentKind::OpenSlides:
        case ContentKind::Epub:
        case ContentKind::Markdown:
        case ContentKind::Message:
        case ContentKind::EncryptedPackage:
            return true;
        default:
            return false;
    }
}

// A document, and in front of it in its file its text in RTF where the program has read it.
struct GivenSide {
    std::string_view text;
    std::string_view document;
};

GivenSide SideOf(std::string_view bytes, std::int64_t text_size) {
    const std::size_t size =
        std::min(static_cast<std::size_t>(std::max<std::int64_t>(text_size, 0)), bytes.size());
    return {bytes.substr(0, size), bytes.substr(size)};
}

// Where the group ends that a place lies in.
std::size_t GroupEnd(std::string_view rtf, std::size_t at) {
    for (int depth = 0; at < rtf.size(); ++at) {
        if (rtf[at] == '\\')
            ++at;
        else if (rtf[at] == '{')
            ++depth;
        else if (rtf[at] == '}' && depth-- == 0)
            return at;
    }
    return rtf.size();
}

// RTF whose generated numbers of the old form stand between signs: a compare leaves them out.
std::string WithLabelsTold(std::string_view rtf) {
    constexpr std::string_view kLabel = "{\\pntext";
    const auto sign = [](char16_t unit) {
        return "\\u" + std::to_string(static_cast<std::int16_t>(unit)) + "?";
    };
    std::string told;
    for (std::size_t begin = 0;;) {
        const std::size_t label = rtf.find(kLabel, begin);
        if (label == std::string_view::npos)
            return told.append(rtf.substr(begin));
        const std::size_t text = label + kLabel.size();
        const std::size_t end = GroupEnd(rtf, text);
        // The sign stands in front of the group: its first words are of the group's look.
        told.append(rtf.substr(begin, label - begin)).append("{\\uc1").append(sign(kLabelBegin));
        told.append("}").append(rtf.substr(label, end - label)).append("}{\\uc1");
        told.append(sign(kLabelEnd));
        begin = end;  // its closing brace ends the group of the second sign
    }
}

// As the reader of its format sees it, generated numbers told apart.
ReadEnd ReadSide(std::string_view document, const ConversionMessage& job, ReadMonitor& monitor,
                 RichText& text) {
    const std::unique_ptr<DocumentSink> rich = MakeRtfSink();
    LabelSink labels(*rich);
    DocumentSink& sink =
        HasLists(document, TextOf(job, "name")) ? static_cast<DocumentSink&>(labels) : *rich;
    ConversionMessage unused;  // which office suite could read it: the program knows a text then
    std::string told;
    if (LooksLikeRtf(document))
        document = told = WithLabelsTold(document);
    ReadEnd end = ReadWordDocument(document, job, sink, monitor, unused);
    if (end.ok())
        text = ReadRtf(sink.Finish());
    return end;
}

// What the job says of one of its two documents, as if it were of that one alone.
ConversionMessage JobOf(Side side, const ConversionMessage& job) {
    ConversionMessage own = job;
    const bool second = side == Side::Modified;
    own["password"] = TextOf(job, second ? "secondpassword" : "password");
    if (second)
        own["name"] = TextOf(job, "secondname");
    return own;
}

// Of a document that the program has read, or that is read here.
ReadEnd TextOfSide(const GivenSide& given, Side side, const ConversionMessage& job,
                   ReadMonitor& monitor, RichText& text) {
    if (!given.text.empty()) {
        text = ReadRtf(given.text);
        return ReadEnd::Ok();
    }
    ReadEnd end = ReadSide(given.document, JobOf(side, job), monitor, text);
    if (!end.ok())
        end.detail = (side == Side::Modified ? "the modified" : "the original") +
                     (end.detail.empty() ? std::string() : ": " + end.detail);
    return end;
}

// In packages of one kind.
ReadEnd LayOut(const PerSide<GivenSide>& given, const ConversionMessage& job, ReadMonitor& monitor,
               PerSide<std::string>& packages) {
    for (const Side side : kBothSides) {
        RichText text;
        if (ReadEnd end = TextOfSide(given[side], side, job, monitor, text); !end.ok())
            return end;
        std::optional<std::string> package =
            TextOf(job, "format") == "odt" ? NewOdtDocument(text) : NewDocument(text);
        if (!package)
            return ReadEnd::Fault(ReadError::TooLarge, "no memory for the package");
        packages[side] = std::move(*package);
    }
    return ReadEnd::Ok();
}

}  // namespace

ReadEnd RunRedlineJob(const PerSide<std::string_view>& files, const ConversionMessage& job,
                      ReadMonitor& monitor, JobOutput& output) {
    ReturnLargeBlocksAtOnce();
    MonitorWatcher watcher(monitor);
    const PerSide<GivenSide> given{SideOf(files.original, NumberOf(job, "text")),
                                   SideOf(files.modified, NumberOf(job, "secondtext"))};
    const PerSide<std::string_view> whole{given.original.document, given.modified.document};
    Asked asked;
    asked.open_document = TextOf(job, "format") == "odt";
    asked.laid_out = !given.original.text.empty() || !given.modified.text.empty() ||
                     !IsPackageOf(whole.original, asked.open_document) ||
                     !IsPackageOf(whole.modified, asked.open_document);
    // OpenDocument has no place for a former look.
    asked.track_formatting = IsSet(job, "formatting") && !asked.open_document;
    PerSide<std::string> packages;
    PerSide<std::string_view> documents = whole;
    if (asked.laid_out) {
        if (ReadEnd end = LayOut(given, job, monitor, packages); !end.ok())
            return end;
        documents = {packages.original, packages.modified};
    }
    WrittenRedline written;
    const auto write = asked.open_document ? WriteOdtRedline : WriteDocxRedline;
    if (ReadEnd end = write(documents, RequestOf(job), &watcher, written); !end.ok())
        return end;
    if (watcher.Cancelled())
        return ReadEnd::Fault(ReadError::Cancelled);
    Verified verified;
    const bool verify = !IsSet(job, "noverify");
    watcher.BeginCheck();
    if (verify) {
        ReturnFreedMemory();
        const Result<Verified> result =
            VerifyRedline({documents, written.bytes, asked.track_formatting,
                           written.headers_left_out, &watcher, asked.open_document});
        if (!result.ok())
            return ReadEnd::Fault(
                ReadError::NotTracked,
                "what was written does not give both documents back; " + result.failure().reason);
        verified = result.value();
    }
    if (ReadEnd end = output.Add(written.bytes); !end.ok())
        return end;
    return output.Add(
        EncodeCertificate(Certify(whole, asked, written, verify ? &verified : nullptr)));
}

}  // namespace zorvane
