#include "load/readers/markdown/markdown_emphasis.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace zorvane {
namespace {

constexpr std::size_t kNoOpener = static_cast<std::size_t>(-1);
constexpr char kDone = '.';  // paired, or found to be text

std::size_t KindOf(const MarkdownPiece& closer) {
    const std::size_t mark = closer.mark == '*' ? 0 : closer.mark == '_' ? 1 : 2;
    return mark * 6 + (closer.opens ? 3U : 0U) + closer.count % 3;
}

std::size_t FindOpener(const std::vector<MarkdownPiece>& pieces,
                       const std::vector<std::size_t>& openers, const MarkdownPiece& closer,
                       std::size_t floor) {
    for (std::size_t place = openers.size(); place-- > floor;) {
        const MarkdownPiece& opener = pieces[openers[place]];
        if (opener.mark != closer.mark)
            continue;
        const bool both = opener.closes || closer.opens;
        const bool odd = both && (opener.count + closer.count) % 3 == 0 &&
                         (opener.count % 3 != 0 || closer.count % 3 != 0);
        if (!odd)
            return place;
    }
    return kNoOpener;
}

void Pair(MarkdownPiece& opener, MarkdownPiece& closer) {
    const std::size_t used = opener.text.size() >= 2 && closer.text.size() >= 2 ? 2U : 1U;
    const std::string_view name = opener.mark == '~' ? "del" : used == 2 ? "strong" : "em";
    opener.text.resize(opener.text.size() - used);
    closer.text.resize(closer.text.size() - used);
    opener.open_tags = "<" + std::string(name) + ">" + opener.open_tags;
    closer.close_tags += "</" + std::string(name) + ">";
}

// Those that may still be closed. Below its floor none fits a closer of that mark, kind and length.
struct Openers {
    std::vector<std::size_t> places;
    std::array<std::size_t, 18> floors{};
};

void PairWithOpeners(std::vector<MarkdownPiece>& pieces, MarkdownPiece& closer, Openers& open) {
    std::vector<std::size_t>& places = open.places;
    while (closer.closes && !closer.text.empty()) {
        std::size_t& own_floor = open.floors[KindOf(closer)];
        const std::size_t opener = FindOpener(pieces, places, closer, own_floor);
        if (opener == kNoOpener) {
            own_floor = places.size();
            return;
        }
        Pair(pieces[places[opener]], closer);
        places.resize(opener + (pieces[places[opener]].text.empty() ? 0 : 1));
        for (std::size_t& floor : open.floors)
            floor = std::min(floor, places.size());
    }
}

}  // namespace

// CommonMark's own procedure.
void EmphasizeMarkdown(std::vector<MarkdownPiece>& pieces, std::size_t bottom) {
    Openers openers;
    for (std::size_t place = bottom; place < pieces.size(); ++place) {
        MarkdownPiece& closer = pieces[place];
        if (closer.mark == 0 || closer.mark == '[')
            continue;
        PairWithOpeners(pieces, closer, openers);
        if (closer.opens && !closer.text.empty())
            openers.places.push_back(place);
    }
    for (std::size_t place = bottom; place < pieces.size(); ++place) {
        MarkdownPiece& piece = pieces[place];
        if (piece.mark != '[')
            piece.mark = piece.mark == 0 ? '\0' : kDone;
    }
}

}  // namespace zorvane
