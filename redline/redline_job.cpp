#include "redline/redline_job.h"

#include "load/readers/content_kind.h"
#include "redline/docx_redline.h"
#include "redline/verify.h"

namespace zorvane {
namespace {

class MonitorWatcher : public RunWatcher {
  public:
    explicit MonitorWatcher(ReadMonitor& monitor) : monitor_(monitor) {}
    bool KeepGoing() override {
        cancelled_ = cancelled_ || !monitor_.Progress(0, 1);
        return !cancelled_;
    }
    bool Cancelled() const { return cancelled_; }

  private:
    ReadMonitor& monitor_;
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
           ", notes " + std::to_string(counts.notes) + ", property changes " +
           std::to_string(counts.properties) + "\n";
}

std::string Certificate(const PerSide<std::string_view>& documents, const WrittenRedline& written,
                        const Verified* verified) {
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
    text += "not compared: formatting of text that stays, sections, styles, properties of tables\n";
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
    request.keep_tracked = IsSet(job, "keeptracked");
    return request;
}

}  // namespace

ReadEnd RunRedlineJob(const PerSide<std::string_view>& documents, const ConversionMessage& job,
                      ReadMonitor& monitor, JobOutput& output) {
    MonitorWatcher watcher(monitor);
    WrittenRedline written;
    if (ReadEnd end = WriteDocxRedline(documents, RequestOf(job), &watcher, written); !end.ok())
        return end;
    if (watcher.Cancelled())
        return ReadEnd::Fault(ReadError::Cancelled);
    Verified verified;
    const bool verify = !IsSet(job, "noverify");
    if (verify) {
        const Result<Verified> result =
            VerifyRedline({documents, written.bytes, written.headers_left_out});
        if (!result.ok())
            return ReadEnd::Fault(
                ReadError::NotTracked,
                "what was written does not give both documents back; " + result.failure().reason);
        verified = result.value();
    }
    if (ReadEnd end = output.Add(written.bytes); !end.ok())
        return end;
    return output.Add(Certificate(documents, written, verify ? &verified : nullptr));
}

}  // namespace zorvane
