#include "redline/redline_job.h"

#include <algorithm>

#include "common/base/text_encoding.h"
#include "compare/document/rtf_reader.h"
#include "load/readers/content_kind.h"
#include "load/readers/sink/document_sink.h"
#include "load/readers/word_job.h"
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

std::string Counted(std::int32_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string LawLine(const char* law, const ReadCounts& counts) {
    return std::string(law) + ": " + Counted(counts.paragraphs, "paragraph", "paragraphs") + ", " +
           Counted(counts.tables, "table", "tables") + " (" + Counted(counts.rows, "row", "rows") +
           ", " + Counted(counts.cells, "cell", "cells") + "), " +
           Counted(counts.notes, "note", "notes") + ", " +
           Counted(counts.headers, "header or footer", "headers and footers") + ": same\n";
}

std::string CountsLine(const RedlineCounts& counts) {
    return "insertions " + std::to_string(counts.insertions) + ", deletions " +
           std::to_string(counts.deletions) + ", paragraph marks " +
           std::to_string(counts.paragraph_marks) + ", rows " + std::to_string(counts.rows) +
           ", moves " + std::to_string(counts.moves) + ", notes " + std::to_string(counts.notes) +
           ", property changes " + std::to_string(counts.properties) + "\n";
}

struct Asked {
    bool open_document = false;
    bool laid_out = false;
    bool track_formatting = false;
};

std::string Certificate(const PerSide<std::string_view>& documents, const Asked& asked,
                        const WrittenRedline& written, const Verified* verified) {
    std::string text = std::string("tracked redline: ") +
                       (verified != nullptr ? "verified" : "not verified") + "\n";
    text += "original sha256 " + HexDigest(documents.original) + "\n";
    text += "modified sha256 " + HexDigest(documents.modified) + "\n";
    text += "redline  sha256 " + HexDigest(written.bytes) + "\n";
    text += CountsLine(written.counts);
    if (verified != nullptr) {
        text += LawLine("accept = modified", verified->accepted);
        text += LawLine("reject = original", verified->rejected);
    }
    if (asked.laid_out)
        text += std::string("laid out anew, since the documents are not two ") +
                (asked.open_document ? ".odt" : ".docx") +
                ": text, looks and tables as they were read\n";
    text += std::string("not compared: ") +
            (asked.track_formatting ? "" : "formatting of text that stays, ") +
            "sections, definitions of styles, properties of tables\n";
    std::string untracked;
    for (const std::string& what : written.untracked)
        untracked += (untracked.empty() ? "" : ", ") + what;
    if (!untracked.empty())
        text += "not tracked: " + untracked + "\n";
    if (written.resolved_before > 0)
        text += "tracked changes of the inputs, accepted first: " +
                std::to_string(written.resolved_before) + "\n";
    return text;
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
        case ContentKind::EncryptedPackage:
            return true;
        default:
            return false;
    }
}

// As the readers see them, in packages of one kind.
ReadEnd LayOut(const PerSide<std::string_view>& documents, const ConversionMessage& job,
               ReadMonitor& monitor, JobOutput& output, PerSide<std::string>& packages) {
    for (const Side side : kBothSides) {
        ConversionMessage own = job;
        const bool second = side == Side::Modified;
        own["password"] = TextOf(job, second ? "secondpassword" : "password");
        if (second)
            own["name"] = TextOf(job, "secondname");
        const std::unique_ptr<DocumentSink> rich = MakeRtfSink();
        LabelSink labels(*rich);
        DocumentSink& sink = HasLists(documents[side], TextOf(own, "name"))
                                 ? static_cast<DocumentSink&>(labels)
                                 : *rich;
        if (ReadEnd end = ReadWordDocument(documents[side], own, sink, monitor, output.answer);
            !end.ok()) {
            end.detail = (second ? "the modified" : "the original") +
                         (end.detail.empty() ? std::string() : ": " + end.detail);
            return end;
        }
        const RichText text = ReadRtf(sink.Finish());
        std::optional<std::string> package =
            TextOf(job, "format") == "odt" ? NewOdtDocument(text) : NewDocument(text);
        if (!package)
            return ReadEnd::Fault(ReadError::TooLarge, "no memory for the package");
        packages[side] = std::move(*package);
    }
    return ReadEnd::Ok();
}

}  // namespace

ReadEnd RunRedlineJob(const PerSide<std::string_view>& given, const ConversionMessage& job,
                      ReadMonitor& monitor, JobOutput& output) {
    MonitorWatcher watcher(monitor);
    Asked asked;
    asked.open_document = TextOf(job, "format") == "odt";
    asked.laid_out = !IsPackageOf(given.original, asked.open_document) ||
                     !IsPackageOf(given.modified, asked.open_document);
    // OpenDocument has no place for a former look.
    asked.track_formatting = IsSet(job, "formatting") && !asked.open_document;
    PerSide<std::string> packages;
    PerSide<std::string_view> documents = given;
    if (asked.laid_out) {
        if (ReadEnd end = LayOut(given, job, monitor, output, packages); !end.ok())
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
    return output.Add(Certificate(given, asked, written, verify ? &verified : nullptr));
}

}  // namespace zorvane
