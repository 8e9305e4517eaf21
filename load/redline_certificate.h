// What is told of a redline with tracked changes, as values: made by zorvane-convert, shown and
// written by the program.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace zorvane {

/// Changes of one kind.
enum class MarkCount : std::uint8_t {
    Insertions,
    Deletions,
    ParagraphMarks,
    Rows,
    Moves,
    Notes,
    PropertyChanges,
    Count
};

/// What one reading of the redline was found to have, as the document that it gives back.
enum class ReadingCount : std::uint8_t { Paragraphs, Tables, Rows, Cells, Notes, Headers, Count };

/// What no mark says, or only by more than was changed.
enum class UntrackedCount : std::uint8_t {
    Markers,
    Sections,
    Controls,
    FramesLeft,
    HeadersLeftOut,
    TablesTwice,
    RowsTwice,
    Signatures,
    Count
};

/// Numbers by an enumeration.
template <class Kind>
class CountsOf {
  public:
    static constexpr std::size_t kKinds = static_cast<std::size_t>(Kind::Count);
    std::int64_t& operator[](Kind kind) { return counts_[static_cast<std::size_t>(kind)]; }
    std::int64_t operator[](Kind kind) const { return counts_[static_cast<std::size_t>(kind)]; }
    auto begin() { return counts_.begin(); }
    auto begin() const { return counts_.begin(); }
    friend bool operator==(const CountsOf&, const CountsOf&) = default;

  private:
    std::array<std::int64_t, kKinds> counts_{};
};

struct RedlineCertificate {
    bool verified = false;
    bool open_document = false;
    bool laid_out = false;    ///< a new document, since the two are no packages of its kind
    bool formatting = false;  ///< looks of what stays are tracked, too
    std::string original_sha256;
    std::string modified_sha256;
    std::string redline_sha256;
    CountsOf<MarkCount> marks;
    CountsOf<ReadingCount> accepted;  ///< only of a redline that was verified
    CountsOf<ReadingCount> rejected;
    CountsOf<UntrackedCount> untracked;
    std::int64_t resolved_before = 0;  ///< tracked changes of the inputs, accepted first
    friend bool operator==(const RedlineCertificate&, const RedlineCertificate&) = default;
};

/// As it travels.
std::string EncodeCertificate(const RedlineCertificate& certificate);
/// Nothing of bytes that no certificate is: whoever sent them may be hostile.
std::optional<RedlineCertificate> DecodeCertificate(std::string_view bytes);

/// Gives a piece of the text in the language of who reads it.
using CertificateWords = std::function<std::string(std::string_view)>;
inline std::string InEnglish(std::string_view words) {
    return std::string(words);
}
/// For people, in lines.
std::string CertificateText(const RedlineCertificate& certificate,
                            const CertificateWords& translate = InEnglish);
/// A JSON object.
std::string CertificateJson(const RedlineCertificate& certificate);

}  // namespace zorvane
