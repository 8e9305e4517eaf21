#include "load/redline_certificate.h"

#include <algorithm>

#include "common/base/ascii.h"
#include "load/conversion_message.h"

namespace zorvane {
namespace {

// Of a number: its key in JSON, and its words for one and for many.
struct Words {
    std::string_view one;
    std::string_view many;
};
struct CountRow {
    std::string_view key;
    Words words;
};
constexpr std::array<CountRow, CountsOf<MarkCount>::kKinds> kMarks{{
    {"insertions", Words{"insertions", "insertions"}},
    {"deletions", Words{"deletions", "deletions"}},
    {"paragraph_marks", Words{"paragraph marks", "paragraph marks"}},
    {"rows", Words{"rows", "rows"}},
    {"moves", Words{"moves", "moves"}},
    {"notes", Words{"notes", "notes"}},
    {"property_changes", Words{"property changes", "property changes"}},
}};
constexpr std::array<CountRow, CountsOf<ReadingCount>::kKinds> kReadings{{
    {"paragraphs", Words{"paragraph", "paragraphs"}},
    {"tables", Words{"table", "tables"}},
    {"rows", Words{"row", "rows"}},
    {"cells", Words{"cell", "cells"}},
    {"notes", Words{"note", "notes"}},
    {"headers", Words{"header or footer", "headers and footers"}},
}};
constexpr std::array<CountRow, CountsOf<UntrackedCount>::kKinds> kUntracked{{
    {"markers",
     Words{"bookmark or comment of deleted text", "bookmarks or comments of deleted text"}},
    {"sections", Words{"section break of deleted text", "section breaks of deleted text"}},
    {"controls",
     Words{"content control around deleted text", "content controls around deleted text"}},
    {"frames_left", Words{"header or footer on one side only, left empty",
                          "headers or footers on one side only, left empty"}},
    {"headers_left_out", Words{"header or footer of the original left out",
                               "headers or footers of the original left out"}},
    {"tables_twice", Words{"table written twice", "tables written twice"}},
    {"rows_twice", Words{"row written twice", "rows written twice"}},
    {"signatures",
     Words{"signature of the modified, taken out", "signatures of the modified, taken out"}},
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

// The lines for people.
class Telling {
  public:
    explicit Telling(const CertificateWords& translate) : translate_(translate) {}

    std::string Text(const RedlineCertificate& certificate) const {
        std::string text = translate_(certificate.verified ? "tracked redline: verified"
                                                           : "tracked redline: not verified");
        text += "\n" + translate_("original sha256") + " " + certificate.original_sha256;
        text += "\n" + translate_("modified sha256") + " " + certificate.modified_sha256;
        text += "\n" + translate_("redline  sha256") + " " + certificate.redline_sha256 + "\n";
        ForEach(certificate.marks, kMarks, [&](const CountRow& row, std::int64_t count) {
            text += (row.key == "insertions" ? "" : ", ") + translate_(row.words.many) + " " +
                    std::to_string(count);
        });
        text += "\n";
        if (certificate.verified) {
            text += translate_("accept = modified") + ": " + Read(certificate.accepted);
            text += translate_("reject = original") + ": " + Read(certificate.rejected);
        }
        return text + Limits(certificate);
    }

  private:
    std::string Counted(std::int64_t count, const CountRow& row) const {
        return std::to_string(count) + " " +
               (count == 1 ? translate_(row.words.one) : translate_(row.words.many));
    }

    std::string Read(const CountsOf<ReadingCount>& counts) const {
        std::string line;
        ForEach(counts, kReadings, [&](const CountRow& row, std::int64_t count) {
            const bool first_of_table = row.key == "rows";
            const bool last_of_table = row.key == "cells";
            line += row.key == "paragraphs" ? "" : first_of_table ? " (" : ", ";
            line += Counted(count, row) + (last_of_table ? ")" : "");
        });
        return line + ": " + translate_("same") + "\n";
    }

    // What was not kept, compared or tracked.
    std::string Limits(const RedlineCertificate& certificate) const {
        std::string text;
        if (certificate.laid_out)
            text += translate_(
                        "laid out anew, since the documents are not two of its kind: text, "
                        "looks and tables as they were read") +
                    "\n";
        text += translate_("not compared: ");
        if (!certificate.formatting)
            text += translate_("formatting of text that stays, ");
        text += translate_("sections, definitions of styles, properties of tables") + "\n";
        std::string untracked;
        ForEach(certificate.untracked, kUntracked, [&](const CountRow& row, std::int64_t count) {
            if (count > 0)
                untracked += (untracked.empty() ? "" : ", ") + Counted(count, row);
        });
        if (!untracked.empty())
            text += translate_("not tracked: ") + untracked + "\n";
        if (certificate.resolved_before > 0)
            text += translate_("tracked changes of the inputs, accepted first: ") +
                    std::to_string(certificate.resolved_before) + "\n";
        return text;
    }

    const CertificateWords& translate_;
};

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

std::string CertificateText(const RedlineCertificate& certificate,
                            const CertificateWords& translate) {
    return Telling(translate).Text(certificate);
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
