#include "redline/verify.h"

#include <algorithm>
#include <array>

#include "common/base/text_encoding.h"
#include "load/readers/container/crypto_tools.h"
#include "redline/odt_verify.h"

namespace zorvane {
namespace {

using Lines = std::vector<ReadLine>;

Result<ReadStories> StoriesOf(std::string_view bytes, Resolution resolution) {
    const std::unique_ptr<Package> package = Package::Open(bytes);
    if (!package)
        return Failure{"the file is no package"};
    ReadStories stories;
    if (const ReadEnd end = StoryReading(*package).Read(resolution, stories); !end.ok())
        return Failure{end.detail};
    return stories;
}

std::string Short(const std::string& text) {
    constexpr std::size_t kMost = 60;
    std::string shown = text.substr(0, kMost);
    for (char& byte : shown) {
        if (static_cast<unsigned char>(byte) < ' ')
            byte = ' ';
    }
    return shown.empty() ? "an empty paragraph" : "\"" + shown + "\"";
}

// Letters with other looks, of all or of those that came back; text and links are the same.
bool SameLooks(const ReadLine& got, const ReadLine& wanted, bool deleted_only) {
    auto other = wanted.pieces.begin();
    std::size_t used = 0;
    for (const ReadPiece& piece : got.pieces) {
        for (std::size_t done = 0; done < piece.text.size();) {
            while (other != wanted.pieces.end() && used == other->text.size()) {
                ++other;
                used = 0;
            }
            if (other == wanted.pieces.end())
                return false;
            if ((piece.deleted || !deleted_only) && piece.look != other->look)
                return false;
            const std::size_t step = std::min(piece.text.size() - done, other->text.size() - used);
            done += step;
            used += step;
        }
    }
    return got.look == wanted.look || (deleted_only && !got.deleted);
}

struct LineCheck {
    std::string place;  // "accepting all: body"
    bool deleted_only = false;

    std::string FirstFault(const Lines& got, const Lines& wanted) const {
        std::size_t paragraph = 0;
        for (std::size_t i = 0; i < std::max(got.size(), wanted.size()); ++i) {
            const bool is_paragraph = i < wanted.size() && wanted[i].border.empty();
            paragraph += is_paragraph ? 1 : 0;
            const std::string where = place + ", paragraph " + std::to_string(paragraph);
            if (i >= got.size())
                return where + " is missing: " + Short(wanted[i].border + wanted[i].Text());
            if (i >= wanted.size())
                return where + " has one more behind it: " + Short(got[i].border + got[i].Text());
            if (!got[i].SaysTheSame(wanted[i]))
                return where + ": " + Short(got[i].border + got[i].Text()) + " instead of " +
                       Short(wanted[i].border + wanted[i].Text());
            if (!SameLooks(got[i], wanted[i], deleted_only))
                return where + " looks different: " + Short(got[i].Text());
        }
        return {};
    }
};

// Those of the Original that no section could take may be missing.
std::string HeaderFault(const ReadStories& got, const ReadStories& wanted, const LineCheck& check,
                        std::int32_t left_out) {
    for (const auto& [kind, stories] : got.headers) {
        if (!wanted.headers.contains(kind))
            return check.place + ": a " + kind + " too many";
    }
    for (const auto& [kind, stories] : wanted.headers) {
        const auto found = got.headers.find(kind);
        std::size_t at = 0;
        for (const Lines& story : stories) {
            std::string fault = check.place + ": a " + kind + " is missing";
            if (found != got.headers.end() && at < found->second.size())
                fault = LineCheck{check.place + ": " + kind, check.deleted_only}.FirstFault(
                    found->second[at], story);
            if (fault.empty())
                ++at;
            else if (--left_out < 0)
                return fault;
        }
        if (found != got.headers.end() && at < found->second.size())
            return check.place + ": a " + kind + " too many";
    }
    return {};
}

// One of the two readings of the redline against the document that it has to be.
Result<ReadCounts> CheckSide(const RedlineToCheck& check, Side side) {
    const bool rejecting = side == Side::Original;
    const auto tell = [&](double part) {
        TellProgress(check.watcher, RunStep::WriteReport, part + (rejecting ? 0 : 0.5));
    };
    const auto read = [&](std::string_view bytes, Resolution resolution) {
        return check.open_document ? ReadOdtStories(bytes, resolution, !rejecting)
                                   : StoriesOf(bytes, resolution);
    };
    tell(0.1);
    Result<ReadStories> wanted = read(check.inputs[side], Resolution::Accept);
    tell(0.2);
    Result<ReadStories> got =
        read(check.redline, rejecting ? Resolution::Reject : Resolution::Accept);
    if (!wanted.ok() || !got.ok())
        return wanted.ok() ? got.failure() : wanted.failure();
    tell(0.4);
    const LineCheck lines{rejecting ? "rejecting all" : "accepting all",
                          rejecting && !check.all_looks};
    if (got.value().without_partner > 0)
        return Failure{lines.place + ": the mark of a paragraph joins it with nothing"};
    std::string fault = lines.FirstFault(got.value().body, wanted.value().body);
    if (fault.empty())
        fault =
            HeaderFault(got.value(), wanted.value(), lines, rejecting ? check.headers_left_out : 0);
    if (!fault.empty())
        return Failure{fault};
    return wanted.value().counts;
}

}  // namespace

Result<Verified> VerifyRedline(const RedlineToCheck& check) {
    const std::string fault =
        check.open_document
            ? FirstOdtFault(check.inputs.modified, check.inputs.original, check.redline)
            : FirstStructureFault(check.inputs.modified, check.inputs.original, check.redline);
    if (!fault.empty())
        return Failure{fault};
    Verified verified;
    for (const Side side : kBothSides) {
        const Result<ReadCounts> counts = CheckSide(check, side);
        if (!counts.ok())
            return counts.failure();
        (side == Side::Original ? verified.rejected : verified.accepted) = counts.value();
    }
    return verified;
}

std::string HexDigest(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string hex;
    for (const char byte : Hasher(HashKind::Sha256).Digest({bytes})) {
        const auto value = static_cast<unsigned char>(byte);
        hex += kDigits[value >> 4U];
        hex += kDigits[value & 0xFU];
    }
    return hex;
}

}  // namespace zorvane
