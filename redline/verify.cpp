#include "redline/verify.h"

#include <algorithm>
#include <array>

#include "common/base/text_encoding.h"
#include "load/readers/container/crypto_tools.h"
#include "redline/odt_verify.h"
#include "redline/verify_spelling.h"

namespace zorvane {
namespace {

using Lines = std::vector<ReadLine>;

std::string Short(const std::string& text) {
    constexpr std::size_t kMost = 60;  // bytes of a paragraph, enough to find it
    std::string shown = text.substr(0, kMost);
    for (char& byte : shown) {
        if (static_cast<unsigned char>(byte) < ' ')
            byte = ' ';
    }
    return shown.empty() ? "an empty paragraph" : "\"" + shown + "\"";
}

// A place in a line, at a letter of a piece or behind the last one.
class LetterWalk {
  public:
    explicit LetterWalk(const ReadLine& line) : pieces_(line.pieces) { PassEnds(); }
    bool AtEnd() const { return piece_ == pieces_.size(); }
    const ReadPiece& Piece() const { return pieces_[piece_]; }
    /// Bytes of the piece from here on.
    std::size_t Left() const { return Piece().text.size() - used_; }
    void Advance(std::size_t bytes) {
        used_ += bytes;
        PassEnds();
    }

  private:
    void PassEnds() {
        for (; !AtEnd() && Left() == 0; ++piece_)
            used_ = 0;
    }

    const std::vector<ReadPiece>& pieces_;
    std::size_t piece_ = 0;
    std::size_t used_ = 0;
};

struct LineCheck {
    std::string place;  // "accepting all: body"
    bool rejecting = false;
    bool all_looks = false;  // those of what stays are tracked, too

    // Letters with other looks; text and links are the same.
    bool SameLooks(const ReadLine& got, const ReadLine& wanted) const {
        LetterWalk here(got);
        LetterWalk there(wanted);
        while (!here.AtEnd() && !there.AtEnd()) {
            if (!SameLook(here.Piece(), there.Piece()))
                return false;
            const std::size_t step = std::min(here.Left(), there.Left());
            here.Advance(step);
            there.Advance(step);
        }
        const bool counts = !rejecting || all_looks || got.deleted;
        return here.AtEnd() && (!counts || got.look == wanted.look);
    }

    // What stays looks as in the Modified, but for what was tracked of that.
    bool SameLook(const ReadPiece& got, const ReadPiece& wanted) const {
        if (!rejecting || got.deleted)
            return got.look == wanted.look;
        const auto of_letters = [](const std::string& look) {
            return std::string_view(look).substr(0, look.find(kDrawn));
        };
        return !all_looks || of_letters(got.look) == of_letters(wanted.look);
    }

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
            if (!SameLooks(got[i], wanted[i]))
                return where + " looks different: " + Short(got[i].Text());
        }
        return {};
    }
};

// Of one kind of headers; `left_out` is how many more may be missing.
std::string KindFault(const std::string& kind, const std::vector<Lines>& got,
                      const std::vector<Lines>& wanted, const LineCheck& check,
                      std::int32_t& left_out) {
    const LineCheck lines{check.place + ": " + kind, check.rejecting, check.all_looks};
    std::size_t at = 0;
    for (const Lines& story : wanted) {
        std::string fault = at < got.size() ? lines.FirstFault(got[at], story)
                                            : check.place + ": a " + kind + " is missing";
        if (fault.empty())
            ++at;
        else if (--left_out < 0)
            return fault;
    }
    return at < got.size() ? check.place + ": a " + kind + " too many" : "";
}

// Those of the Original that no section could take may be missing.
std::string HeaderFault(const ReadStories& got, const ReadStories& wanted, const LineCheck& check,
                        std::int32_t left_out) {
    for (const auto& [kind, stories] : got.headers) {
        if (!wanted.headers.contains(kind))
            return check.place + ": a " + kind + " too many";
    }
    for (const auto& [kind, stories] : wanted.headers) {
        const auto found = got.headers.find(kind);
        const std::vector<Lines> none;
        std::string fault = KindFault(kind, found == got.headers.end() ? none : found->second,
                                      stories, check, left_out);
        if (!fault.empty())
            return fault;
    }
    return {};
}

// One of the two readings of the redline against the document that it has to be.
std::string LawFault(const RedlineToCheck& check, Side side, const ReadStories& got,
                     const ReadStories& wanted) {
    const bool rejecting = side == Side::Original;
    const LineCheck lines{rejecting ? "rejecting all" : "accepting all", rejecting,
                          check.all_looks};
    if (got.without_partner > 0)
        return lines.place + ": the mark of a paragraph joins it with nothing";
    std::string fault = lines.FirstFault(got.body, wanted.body);
    return fault.empty() ? HeaderFault(got, wanted, lines, rejecting ? check.headers_left_out : 0)
                         : fault;
}

constexpr Resolution ResolutionOf(Side side) {
    return side == Side::Original ? Resolution::Reject : Resolution::Accept;
}

// Each input is parsed once and the redline once for each reading; of all of them one tree is there
// at a time.
class DocxCheck {
  public:
    explicit DocxCheck(const RedlineToCheck& check) : check_(check) {}

    Result<Verified> Run() {
        for (const Side side : kBothSides)
            ReadInput(side);
        for (const Side side : {Side::Modified, Side::Original}) {
            if (fault_.empty())
                CheckRedline(side);
        }
        if (!fault_.empty())
            return Failure{fault_};
        return Verified{wanted_.modified.counts, wanted_.original.counts};
    }

  private:
    void ReadInput(Side side) {
        PartTrees trees(check_.inputs[side]);
        if (!trees.IsPackage()) {
            fault_ = "the file is no package";
            return;
        }
        missing_before_.merge(MissingIn(trees));
        Read(trees, Resolution::Accept, wanted_[side]);
    }

    void CheckRedline(Side side) {
        PartTrees trees(check_.redline);
        const std::unique_ptr<Package> modified = Package::Open(check_.inputs.modified);
        if (!trees.IsPackage() || !modified) {
            fault_ = "the file is no package";
            return;
        }
        if (side == Side::Modified)
            fault_ = FirstStructureFault(trees, *modified, missing_before_);
        ReadStories got;
        if (fault_.empty())
            Read(trees, ResolutionOf(side), got);
        if (fault_.empty())
            fault_ = LawFault(check_, side, got, wanted_[side]);
    }

    void Read(PartTrees& trees, Resolution resolution, ReadStories& stories) {
        if (const ReadEnd end = StoryReading(trees).Read(resolution, stories); !end.ok())
            fault_ = end.detail;
        constexpr double kReadings = 4;
        TellProgress(check_.watcher, RunStep::WriteReport, ++readings_ / kReadings);
    }

    const RedlineToCheck& check_;
    std::set<std::string> missing_before_;
    PerSide<ReadStories> wanted_;
    std::string fault_;
    int readings_ = 0;
};

Result<Verified> CheckOpenDocument(const RedlineToCheck& check) {
    if (const std::string fault =
            FirstOdtFault(check.inputs.modified, check.inputs.original, check.redline);
        !fault.empty())
        return Failure{fault};
    PerSide<ReadCounts> counts;
    double readings = 0;
    for (const Side side : kBothSides) {
        const auto read = [&](std::string_view bytes, Resolution resolution) {
            constexpr double kReadings = 4;
            TellProgress(check.watcher, RunStep::WriteReport, ++readings / kReadings);
            return ReadOdtStories(bytes, resolution, side == Side::Modified);
        };
        const Result<ReadStories> wanted = read(check.inputs[side], Resolution::Accept);
        if (!wanted.ok())
            return wanted.failure();
        const Result<ReadStories> got = read(check.redline, ResolutionOf(side));
        if (!got.ok())
            return got.failure();
        if (const std::string fault = LawFault(check, side, got.value(), wanted.value());
            !fault.empty())
            return Failure{fault};
        counts[side] = wanted.value().counts;
    }
    return Verified{counts.modified, counts.original};
}

}  // namespace

Result<Verified> VerifyRedline(const RedlineToCheck& check) {
    return check.open_document ? CheckOpenDocument(check) : DocxCheck(check).Run();
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
