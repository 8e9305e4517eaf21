#include "find/hit_choice.h"

#include <algorithm>
#include <utility>

#include "find/engine/orben_x.h"

namespace zorvane {
namespace {

std::string FileOf(const OrbenX& engine, std::int32_t hit) {
    std::string file;
    std::string item;
    std::int32_t line = 0;
    std::int32_t column = 0;
    return engine.GetHit(hit, file, line, column, item) ? file : std::string();
}

}  // namespace

void MarkedHits::Toggle(std::int32_t hit) {
    if (std::erase(hits_, hit) > 0)
        return;
    if (hits_.size() > 1)
        hits_.erase(hits_.begin());
    hits_.push_back(hit);
}

bool MarkedHits::Has(std::int32_t hit) const {
    return std::find(hits_.begin(), hits_.end(), hit) != hits_.end();
}

std::optional<PerSide<std::string>> FilesToCompare(const OrbenX& engine,
                                                   std::span<const std::int32_t> chosen,
                                                   const MarkedHits& marked) {
    const std::vector<std::int32_t>& kept = marked.Hits();
    PerSide<std::int32_t> hits{-1, -1};
    if (chosen.size() == 2)
        hits = {chosen[0], chosen[1]};
    else if (kept.size() == 2)
        hits = {kept[0], kept[1]};
    else if (kept.size() == 1 && chosen.size() == 1)
        hits = {kept[0], chosen[0]};
    if (hits.original > hits.modified)
        std::swap(hits.original, hits.modified);
    PerSide<std::string> files{FileOf(engine, hits.original), FileOf(engine, hits.modified)};
    if (files.original.empty() || files.modified.empty() || files.original == files.modified)
        return std::nullopt;
    return files;
}

}  // namespace zorvane
