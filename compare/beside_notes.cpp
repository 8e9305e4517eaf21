#include "compare/beside_notes.h"

#include "common/platform/mapped_file.h"
#include "compare/document/beside_compare.h"

namespace zorvane {

BesideFound FindBeside(const Comparison& comparison, const BesideSides& sides) {
    const std::vector<std::int32_t> partners = comparison.Partners();
    std::vector<BesideDifference> differences =
        CompareBeside(*sides.items.original, *sides.items.modified, partners);
    for (BesideDifference& look : CompareFormatting(*sides.texts.original, *sides.texts.modified,
                                                    partners, sides.depth, sides.watcher))
        differences.push_back(std::move(look));
    BesideFound found;
    found.sentence = BesideSentence(differences);
    for (const BesideDifference& difference : differences) {
        const BesideKindName& name = NameOf(difference.kind);
        const bool looks = difference.kind == BesideKind::Formatting;
        found.notes.push_back({std::string(name.option),
                               looks ? "formatting" : std::string(name.singular),
                               std::string(VerbOf(difference.kind, difference.change)),
                               difference.paragraphs, difference.old_text, difference.new_text});
    }
    return found;
}

bool HaveSameBytes(const PerSide<std::string>& files) {
    const Result<MappedFile> original = MappedFile::Open(files.original);
    const Result<MappedFile> modified = MappedFile::Open(files.modified);
    return original.ok() && modified.ok() && original.value().Bytes() == modified.value().Bytes();
}

}  // namespace zorvane
