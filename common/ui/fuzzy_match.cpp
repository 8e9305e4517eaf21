#include "common/ui/fuzzy_match.h"

#include <algorithm>

#include <QStringList>

namespace zorvane {

namespace {

constexpr int kWholePiece = 1000;
constexpr int kWordStart = 300;
constexpr int kScattered = 100;
constexpr int kGapCost = 10;

bool StartsWord(const QString& text, qsizetype at) {
    return at == 0 || !text[at - 1].isLetterOrNumber();
}

// The best place of `piece` as one run from `from` on: the first at the start of a word, else the
// first at all.
qsizetype PlaceOf(const QString& piece, const QString& text, qsizetype from) {
    const qsizetype first = text.indexOf(piece, from, Qt::CaseInsensitive);
    for (qsizetype at = first; at >= 0; at = text.indexOf(piece, at + 1, Qt::CaseInsensitive))
        if (StartsWord(text, at))
            return at;
    return first;
}

// Letter by letter: the next start of a word if there is one with this letter, else the next
// place. A start of a word is passed over when the letters behind would then not be found.
bool Scatter(QStringView piece, const QString& text, qsizetype from, std::vector<int>& places) {
    if (piece.isEmpty())
        return true;
    std::vector<qsizetype> starts;
    qsizetype next = -1;
    for (qsizetype at = from; at < text.size(); ++at) {
        if (text[at].toCaseFolded() != piece[0].toCaseFolded())
            continue;
        if (next < 0)
            next = at;
        if (StartsWord(text, at))
            starts.push_back(at);
    }
    if (next < 0)
        return false;
    const std::size_t size = places.size();
    const qsizetype start = starts.empty() ? next : starts.front();
    for (const qsizetype at : {start, next}) {
        places.push_back(static_cast<int>(at));
        if (Scatter(piece.mid(1), text, at + 1, places))
            return true;
        places.resize(size);
        if (start == next)
            break;
    }
    return false;
}

// Adds the places of one piece; nothing: it does not stand there.
std::optional<int> MatchPiece(const QString& piece, const QString& text, FuzzyMatch& match) {
    std::vector<int>& places = match.places;
    const qsizetype from = places.empty() ? 0 : places.back() + 1;
    if (const qsizetype at = PlaceOf(piece, text, from); at >= 0) {
        for (int step = 0; step < piece.size(); ++step)
            places.push_back(static_cast<int>(at) + step);
        return kWholePiece + (StartsWord(text, at) ? kWordStart : 0) - static_cast<int>(at);
    }
    const std::size_t before = places.size();
    if (!Scatter(piece, text, from, places))
        return std::nullopt;
    match.scattered = true;
    int score = kScattered;
    for (std::size_t at = before; at < places.size(); ++at) {
        if (at > before)
            score -= kGapCost * (places[at] - places[at - 1] - 1 > 0 ? 1 : 0);
        if (StartsWord(text, places[at]))
            score += kGapCost * 3;
    }
    return score - places[before];
}

}  // namespace

std::optional<FuzzyMatch> MatchFuzzy(const QString& pattern, const QString& text) {
    FuzzyMatch match;
    for (const QString& piece : pattern.split(u' ', Qt::SkipEmptyParts)) {
        const std::optional<int> score = MatchPiece(piece, text, match);
        if (!score)
            return std::nullopt;
        match.score += *score;
    }
    return match;
}

}  // namespace zorvane
