#include "load/redline_certificate.h"

#include <algorithm>

#include "common/base/ascii.h"
#include "load/conversion_message.h"

namespace zorvane {
namespace {

// Of a number: its key in JSON, and its words for one and for many.
struct CountRow {
    std::string_view key;
    std::string_view one;
    std::string_view many;
};
constexpr std::array<CountRow, CountsOf<MarkCount>::kKinds> kMarks{{
    {"insertions", "insertions", "insertions"},
    {"deletions", "deletions", "deletions"},
    {"paragraph_marks", "paragraph marks", "paragraph marks"},
    {"rows", "rows", "rows"},
    {"moves", "moves", "moves"},
    {"notes", "notes", "notes"},
    {"property_changes", "property changes", "property changes"},
}};
constexpr std::array<CountRow, CountsOf<ReadingCount>::kKinds> kReadings{{
    {"paragraphs", "paragraph", "paragraphs"},
    {"tables", "table", "tables"},
    {"rows", "row", "rows"},
    {"cells", "cell", "cells"},
    {"notes", "note", "notes"},
    {"headers", "header or footer", "headers and footers"},
}};
constexpr std::array<CountRow, CountsOf<UntrackedCount>::kKinds> kUntracked{{
    {"markers", "bookmark or comment of deleted text", "bookmarks or comments of deleted text"},
    {"sections", "section break of deleted text", "section breaks of deleted text"},
    {"controls", "content control around deleted text", "content controls around deleted text"},
    {"frames_left", "header or footer on one side only, left empty",
     "headers or footers on one side only, left empty"},
    {"headers_left_out", "header or footer of the original left out",
     "headers or footers of the original left out"},
    {"tables_twice", "table written twice", "tables written twice"},
    {"rows_twice", "row written twice", "rows written twice"},
}};

// Calls `put` for each number with its row; `Counts` may be const.
template <class Counts, class Rows, class Put>
void ForEach(Counts& counts, const Rows& rows, const Put& put) {
    auto count = counts.begin();
    for (const CountRow& row : rows)
        put(row, *count++);
}

// All numbers, each with a name that a message may have: letters and digits.
template <class Certificate, class Put>
void ForAll(Certificate& certificate, const Put& put) {
    const auto group = [&put](auto& counts, const auto& rows, const char* name) {
        std::size_t index = 0;
        ForEach(counts, rows,
                [&](const CountRow&, auto& count) { put(name + std::to_string(++index), count); });
    };
    group(certificate.marks, kMarks, "mark");
    group(certificate.accepted, kReadings, "accepted");
    group(certificate.rejected, kReadings, "rejected");
    group(certificate.untracked, kUntracked, "untracked");
    put("before", certificate.resolved_before);
}

template <class Certificate, class Put>
void ForAllFlags(Certificate& certificate, const Put& put) {
    put("verified", certificate.verified);
    put("opendocument", certificate.open_document);
    put("laidout", certificate.laid_out);
    put("formatting", certificate.formatting);
}

template <class Certificate, class Put>
void ForAllDigests(Certificate& certificate, const Put& put) {
    put("original", certificate.original_sha256);
    put("modified", certificate.modified_sha256);
    put("redline", certificate.redline_sha256);
}

bool IsDigest(std::string_view text) {
    constexpr std::size_t kDigits = 64;
    return text.size() == kDigits && std::all_of(text.begin(), text.end(), [](char digit) {
               return IsAsciiDigit(digit) || (digit >= 'a' && digit <= 'f');
           });
}

std::string Counted(std::int64_t count, const CountRow& row) {
    return std::to_string(count) + " " + std::string(count == 1 ? row.one : row.many);
}

std::string LawLine(const char* law, const CountsOf<ReadingCount>& counts) {
    std::string line = std::string(law) + ": ";
    ForEach(counts, kReadings, [&line](const CountRow& row, std::int64_t count) {
        const bool first_of_table = row.key == "rows";
        const bool last_of_table = row.key == "cells";
        line += row.key == "paragraphs" ? "" : first_of_table ? " (" : ", ";
        line += Counted(count, row) + (last_of_table ? ")" : "");
    });
    return line + ": same\n";
}

}  // namespace

std::string EncodeCertificate(const RedlineCertificate& certificate) {
    ConversionMessage message;
    ForAll(certificate, [&message](const std::string& key, std::int64_t count) {
        message[key] = std::to_string(count);
    });
    ForAllFlags(certificate,
                [&message](const char* key, bool flag) { message[key] = flag ? "1" : "0"; });
    ForAllDigests(certificate, [&message](const char* key, const std::string& digest) {
        message[key] = digest;
    });
    return EncodeMessage(message);
}

std::optional<RedlineCertificate> DecodeCertificate(std::string_view bytes) {
    MessageReader reader;
    reader.Feed(bytes);
    const std::optional<ConversionMessage> message = reader.Next();
    if (!message)
        return std::nullopt;
    RedlineCertificate certificate;
    bool good = true;
    ForAll(certificate, [&](const std::string& key, std::int64_t& count) {
        count = NumberOf(*message, key);
        good = good && message->contains(key) && count >= 0;
    });
    ForAllFlags(certificate,
                [&message](const char* key, bool& flag) { flag = IsSet(*message, key); });
    ForAllDigests(certificate, [&](const char* key, std::string& digest) {
        digest = TextOf(*message, key);
        good = good && IsDigest(digest);
    });
    return good ? std::optional(certificate) : std::nullopt;
}

std::string CertificateText(const RedlineCertificate& certificate) {
    std::string text = std::string("tracked redline: ") +
                       (certificate.verified ? "verified" : "not verified") + "\n";
    text += "original sha256 " + certificate.original_sha256 + "\n";
    text += "modified sha256 " + certificate.modified_sha256 + "\n";
    text += "redline  sha256 " + certificate.redline_sha256 + "\n";
    ForEach(certificate.marks, kMarks, [&text](const CountRow& row, std::int64_t count) {
        text += (row.key == "insertions" ? "" : ", ") + std::string(row.many) + " " +
                std::to_string(count);
    });
    text += "\n";
    if (certificate.verified) {
        text += LawLine("accept = modified", certificate.accepted);
        text += LawLine("reject = original", certificate.rejected);
    }
    if (certificate.laid_out)
        text += std::string("laid out anew, since the documents are not two ") +
                (certificate.open_document ? ".odt" : ".docx") +
                ": text, looks and tables as they were read\n";
    text += std::string("not compared: ") +
            (certificate.formatting ? "" : "formatting of text that stays, ") +
            "sections, definitions of styles, properties of tables\n";
    std::string untracked;
    ForEach(certificate.untracked, kUntracked, [&](const CountRow& row, std::int64_t count) {
        if (count > 0)
            untracked += (untracked.empty() ? "" : ", ") + Counted(count, row);
    });
    if (!untracked.empty())
        text += "not tracked: " + untracked + "\n";
    if (certificate.resolved_before > 0)
        text += "tracked changes of the inputs, accepted first: " +
                std::to_string(certificate.resolved_before) + "\n";
    return text;
}

std::string CertificateJson(const RedlineCertificate& certificate) {
    std::string json = "{";
    const auto flag = [&json](std::string_view key, bool set) {
        json.append(json.size() > 1 ? "," : "").append("\"").append(key);
        json.append(set ? "\":true" : "\":false");
    };
    flag("verified", certificate.verified);
    ForAllDigests(certificate, [&json](const char* key, const std::string& digest) {
        json.append(",\"").append(key).append("_sha256\":\"").append(digest).append("\"");
    });
    flag("laid_out", certificate.laid_out);
    flag("formatting", certificate.formatting);
    const auto group = [&json](const char* name, const auto& counts, const auto& rows) {
        json.append(",\"").append(name).append("\":");
        char before = '{';
        ForEach(counts, rows, [&](const CountRow& row, std::int64_t count) {
            json += before;
            json.append("\"").append(row.key).append("\":").append(std::to_string(count));
            before = ',';
        });
        json += '}';
    };
    group("marks", certificate.marks, kMarks);
    if (certificate.verified) {
        group("accepted", certificate.accepted, kReadings);
        group("rejected", certificate.rejected, kReadings);
    }
    group("not_tracked", certificate.untracked, kUntracked);
    return json + ",\"accepted_before\":" + std::to_string(certificate.resolved_before) + "}";
}

}  // namespace zorvane
