// What a document holds beside its words: pictures, link targets, comments, ... Readers report it
// next to the text, so that a change of it does not pass in silence.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/result.h"

namespace zorvane {

enum class BesideKind : std::uint8_t {
    Picture,
    Drawing,
    Chart,
    Link,
    Formula,
    Object,  ///< embedded: a sheet in a text, a film, a file attached to a message
    Comment,
    TrackedChange,  ///< the text shows it as accepted
    HiddenText,
    Field,
    Metadata,
    PageWithoutText,
    DamagedPart,  ///< could not be read, or not whole; told of each side for itself
    Formatting    ///< never in a list of items: it is found by comparing rich texts
};
inline constexpr std::size_t kBesideKinds = 14;

/// How a kind is called: in options and JSON, and in a sentence for one and for several.
struct BesideKindName {
    BesideKind kind;
    std::string_view option;
    std::string_view singular;
    std::string_view plural;
};
const std::array<BesideKindName, kBesideKinds>& BesideKindNames();
const BesideKindName& NameOf(BesideKind kind);

/// "links, pictures" or "all"; a failure names the word that is no kind and those that are.
Result<std::set<BesideKind>> ParseBesideKinds(std::string_view list);

/// In an item that a reader sends: at the place that the text has reached.
inline constexpr std::int32_t kBesideHere = -1;

struct BesideItem {
    BesideKind kind = BesideKind::Picture;
    /// 1-based in the loaded text; 0 stands for the whole document. `text` then begins with the
    /// place and ": ", where there is one ("title: ", "page 3: ", "Sheet1!B3: ").
    std::int32_t paragraph = kBesideHere;
    std::string text;    ///< UTF-8, what a person recognises it by; at most `kBesideTextBytes`
    std::string digest;  ///< of the content, by `BesideDigest`
    friend bool operator==(const BesideItem&, const BesideItem&) = default;
};
inline constexpr std::size_t kBesideTextBytes = 200;
/// More items of one document are told as a number and one digest for each kind.
inline constexpr std::size_t kMostBesideItems = 4000;

/// 32 hexadecimal digits of XXH3-128.
std::string BesideDigest(std::string_view content);
/// The same of a content that comes in pieces.
class BesideHash {
  public:
    BesideHash();
    ~BesideHash();
    BesideHash(const BesideHash&) = delete;
    BesideHash& operator=(const BesideHash&) = delete;
    void Add(std::string_view piece);
    std::string Digest() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};
/// White space as single blanks, without control characters, cut at a letter's begin.
std::string BesideText(std::string_view utf8);
/// The place of an item of the whole document: what stands in front of ": " in its text.
std::string_view BesidePlace(const BesideItem& item);

/// The digest of the text itself.
BesideItem MakeBeside(BesideKind kind, std::string_view text);
/// `content` is what the digest is made of.
BesideItem MakeBeside(BesideKind kind, std::string_view text, std::string_view content);
/// Of the whole document, "name: value". No item for an empty value.
std::optional<BesideItem> MakeMetadata(std::string_view name, std::string_view value);

/// Collects items, whatever their number.
class BesideList {
  public:
    /// False when the item is counted only: the caller keeps it no more than this list does.
    bool Add(BesideItem item);
    /// The items, and behind them one for each kind that had too many.
    std::vector<BesideItem> Take();
    /// Only the latter.
    std::vector<BesideItem> TakeOverflow();

  private:
    struct Overflow {
        std::size_t count = 0;
        std::string digest;
    };
    std::vector<BesideItem> items_;
    std::array<Overflow, kBesideKinds> overflow_;
};

/// As printable ASCII without white space but blanks, backslashes and braces, so that it may stand
/// in rich text; one line.
std::string EncodeBeside(const BesideItem& item);
/// Nothing for bytes that are no item. Every part is bounded, whoever wrote them.
std::optional<BesideItem> DecodeBeside(std::string_view bytes);
/// A line each.
std::string EncodeBesideList(const std::vector<BesideItem>& items);
std::vector<BesideItem> DecodeBesideList(std::string_view bytes);

}  // namespace zorvane
