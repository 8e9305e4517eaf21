#include "compare/document/beside.h"

#include <algorithm>
#include <utility>
#include <xxhash.h>

#include "common/base/ascii.h"
#include "common/base/parse_number.h"
#include "common/base/text_bytes.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

constexpr std::string_view kHex = "0123456789abcdef";
constexpr std::size_t kDigestDigits = 32;
constexpr std::size_t kLongestLine = 2000;  // an item as it is written, at its longest

bool StandsForItself(char byte) {
    constexpr std::string_view kPlain = ".,:;/?&=#@!'()*+-_~<>|";
    return IsAsciiDigit(byte) || IsAsciiLetter(byte) || kPlain.find(byte) != std::string_view::npos;
}

std::string Escaped(std::string_view text) {
    std::string out;
    for (const char byte : text) {
        if (StandsForItself(byte)) {
            out += byte;
            continue;
        }
        const auto value = static_cast<unsigned char>(byte);
        out += '%';
        out += kHex[value / 16];
        out += kHex[value % 16];
    }
    return out;
}

std::string Unescaped(std::string_view text) {
    std::string out;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool escape = text[at] == '%' && at + 2 < text.size();
        const std::size_t high = escape ? kHex.find(text[at + 1]) : std::string_view::npos;
        const std::size_t low = high == std::string_view::npos ? high : kHex.find(text[at + 2]);
        if (low == std::string_view::npos) {
            out += text[at];
            continue;
        }
        out += static_cast<char>(high * 16 + low);
        at += 2;
    }
    return out;
}

// Takes the next word off `rest`.
std::string_view Word(std::string_view& rest) {
    const std::size_t end = std::min(rest.find(' '), rest.size());
    const std::string_view word = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return word;
}

std::optional<std::int32_t> ParagraphIn(std::string_view text) {
    const auto number = ParseNumber<std::int32_t>(text);
    return number && *number >= kBesideHere ? number : std::nullopt;
}

std::string Digits(const XXH128_hash_t& hash) {
    std::string digits;
    for (const std::uint64_t half : {hash.high64, hash.low64}) {
        for (int shift = 60; shift >= 0; shift -= 4)
            digits += kHex[static_cast<std::size_t>((half >> shift) & 0xF)];
    }
    return digits;
}

bool IsDigest(std::string_view text) {
    return text.size() == kDigestDigits && text.find_first_not_of(kHex) == std::string_view::npos;
}

}  // namespace

const std::array<BesideKindName, kBesideKinds>& BesideKindNames() {
    // By the numbers of `BesideKind`.
    static constexpr std::array<BesideKindName, kBesideKinds> kNames = {{
        {BesideKind::Picture, "pictures", "picture", "pictures"},
        {BesideKind::Drawing, "drawings", "drawing", "drawings"},
        {BesideKind::Chart, "charts", "chart", "charts"},
        {BesideKind::Link, "links", "link target", "link targets"},
        {BesideKind::Formula, "formulas", "formula", "formulas"},
        {BesideKind::Object, "objects", "embedded object", "embedded objects"},
        {BesideKind::Comment, "comments", "comment", "comments"},
        {BesideKind::TrackedChange, "tracked", "tracked change", "tracked changes"},
        {BesideKind::HiddenText, "hidden", "hidden text", "hidden texts"},
        {BesideKind::Field, "fields", "field", "fields"},
        {BesideKind::Metadata, "metadata", "document property", "document properties"},
        {BesideKind::PageWithoutText, "pages", "page without text", "pages without text"},
        {BesideKind::DamagedPart, "damaged", "damaged part", "damaged parts"},
        {BesideKind::Formatting, "formatting", "paragraph", "paragraphs"},
    }};
    return kNames;
}

const BesideKindName& NameOf(BesideKind kind) {
    return BesideKindNames()[static_cast<std::size_t>(kind)];
}

Result<std::set<BesideKind>> ParseBesideKinds(std::string_view list) {
    std::set<BesideKind> kinds;
    const std::string lower = ToLower(list);
    std::string_view rest = lower;
    while (!rest.empty()) {
        const std::size_t comma = std::min(rest.find(','), rest.size());
        const std::string_view word = Trim(rest.substr(0, comma));
        rest.remove_prefix(std::min(comma + 1, rest.size()));
        bool known = word.empty();
        for (const BesideKindName& name : BesideKindNames()) {
            if (word != "all" && word != name.option)
                continue;
            kinds.insert(name.kind);
            known = true;
        }
        if (known)
            continue;
        std::string reason = "\"" + std::string(word) + "\" is none of: all";
        for (const BesideKindName& name : BesideKindNames())
            reason += ", " + std::string(name.option);
        return Failure{reason};
    }
    if (kinds.empty())
        return Failure{"no kind is named"};
    return kinds;
}

struct BesideHash::State {
    XXH3_state_t hash;
};

BesideHash::BesideHash() : state_(std::make_unique<State>()) {
    XXH3_128bits_reset(&state_->hash);
}

BesideHash::~BesideHash() = default;

void BesideHash::Add(std::string_view piece) {
    XXH3_128bits_update(&state_->hash, piece.data(), piece.size());
}

std::string BesideHash::Digest() const {
    return Digits(XXH3_128bits_digest(&state_->hash));
}

std::string BesideDigest(std::string_view content) {
    return Digits(XXH3_128bits(content.data(), content.size()));
}

std::string BesideText(std::string_view utf8) {
    std::string text;
    for (const char byte : utf8) {
        const bool control = static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
        if (!control && byte != ' ')
            text += byte;
        else if (!text.empty() && text.back() != ' ')
            text += ' ';
        if (text.size() > kBesideTextBytes)
            break;
    }
    if (text.size() > kBesideTextBytes) {
        constexpr std::string_view kCut = "\xE2\x80\xA6";
        std::size_t end = kBesideTextBytes - kCut.size();
        while (end > 0 && IsContinuation(text[end]))
            --end;
        text.replace(end, std::string::npos, kCut);
    }
    while (text.ends_with(' '))
        text.pop_back();
    return text;
}

std::string_view BesidePlace(const BesideItem& item) {
    const std::size_t colon = item.text.find(": ");
    return item.paragraph > 0 || colon == std::string::npos
               ? std::string_view()
               : std::string_view(item.text).substr(0, colon);
}

BesideItem MakeBeside(BesideKind kind, std::string_view text) {
    return MakeBeside(kind, text, text);
}

BesideItem MakeBeside(BesideKind kind, std::string_view text, std::string_view content) {
    return {kind, kBesideHere, BesideText(text), BesideDigest(content)};
}

std::optional<BesideItem> MakeMetadata(std::string_view name, std::string_view value) {
    value = Trim(value);
    if (value.empty())
        return std::nullopt;
    const std::string text = std::string(name) + ": " + std::string(value);
    return BesideItem{BesideKind::Metadata, 0, BesideText(text), BesideDigest(text)};
}

bool BesideList::Add(BesideItem item) {
    if (items_.size() < kMostBesideItems) {
        items_.push_back(std::move(item));
        return true;
    }
    Overflow& overflow = overflow_[static_cast<std::size_t>(item.kind)];
    ++overflow.count;
    overflow.digest = BesideDigest(overflow.digest + item.digest);
    return false;
}

std::vector<BesideItem> BesideList::TakeOverflow() {
    std::vector<BesideItem> items;
    for (std::size_t kind = 0; kind < kBesideKinds; ++kind) {
        Overflow& overflow = overflow_[kind];
        if (overflow.count > 0)
            items.push_back({static_cast<BesideKind>(kind), 0,
                             "others: " + std::to_string(overflow.count), overflow.digest});
        overflow = Overflow{};
    }
    return items;
}

std::vector<BesideItem> BesideList::Take() {
    std::vector<BesideItem> items = std::exchange(items_, {});
    for (BesideItem& item : TakeOverflow())
        items.push_back(std::move(item));
    return items;
}

std::string EncodeBeside(const BesideItem& item) {
    return std::string(NameOf(item.kind).option) + " " + std::to_string(item.paragraph) + " " +
           item.digest + " " + Escaped(item.text);
}

std::optional<BesideItem> DecodeBeside(std::string_view bytes) {
    bytes = bytes.substr(0, kLongestLine);
    const std::string_view kind = Word(bytes);
    const std::optional<std::int32_t> paragraph = ParagraphIn(Word(bytes));
    const std::string_view digest = Word(bytes);
    const auto& names = BesideKindNames();
    const auto name = std::find_if(names.begin(), names.end(), [kind](const BesideKindName& row) {
        return row.option == kind && row.kind != BesideKind::Formatting;
    });
    if (name == names.end() || !paragraph || !IsDigest(digest))
        return std::nullopt;
    const std::string text = Unescaped(Word(bytes));
    return BesideItem{name->kind, *paragraph, BesideText(IsValidUtf8(text) ? text : ""),
                      std::string(digest)};
}

std::string EncodeBesideList(const std::vector<BesideItem>& items) {
    std::string bytes;
    for (const BesideItem& item : items)
        bytes += EncodeBeside(item) + "\n";
    return bytes;
}

std::vector<BesideItem> DecodeBesideList(std::string_view bytes) {
    constexpr std::size_t kMost = kMostBesideItems + kBesideKinds;
    std::vector<BesideItem> items;
    while (!bytes.empty() && items.size() < kMost) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        if (std::optional<BesideItem> item = DecodeBeside(bytes.substr(0, end)))
            items.push_back(std::move(*item));
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return items;
}

}  // namespace zorvane
