#include "redline/docx_redline.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>

#include "common/platform/freed_memory.h"
#include "redline/header_pairs.h"
#include "redline/note_parts.h"
#include "redline/resolve.h"
#include "redline/signatures.h"
#include "redline/story_writer.h"
#include "redline/xml_tools.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

constexpr std::array<std::string_view, 2> kWordNamespaces{
    "http://schemas.openxmlformats.org/wordprocessingml/2006/main",
    "http://purl.oclc.org/ooxml/wordprocessingml/main"};

std::vector<std::string> StoryParts(WordPackage& package) {
    std::vector<std::string> parts{package.MainPart()};
    for (const PartRelation& relation : package.Relations(package.MainPart())) {
        const std::string_view kind = KindOf(relation);
        if (kind == "header" || kind == "footer" || kind == "footnotes" || kind == "endnotes")
            parts.push_back(relation.part);
    }
    return parts;
}

bool HoldsTracking(const Node& root) {
    bool found = false;
    VisitElements(root, [&found](const Node& node) {
        found = found || (IsTracking(node) && !Is(node, "tblGridChange"));
    });
    return found;
}

// As if all tracked changes were accepted.
std::int32_t AcceptAll(WordPackage& package) {
    std::int32_t changes = 0;
    for (const std::string& part : StoryParts(package)) {
        if (HoldsTracking(package.Tree(part)))
            changes += Resolve(package.Edit(part), Resolution::Accept).changes;
    }
    return changes;
}

ReadEnd CheckNames(WordPackage& package, const char* side) {
    const Node root = package.Tree(package.MainPart());
    const std::string_view space = root.attribute("xmlns:w").value();
    if (std::find(kWordNamespaces.begin(), kWordNamespaces.end(), space) == kWordNamespaces.end())
        return ReadEnd::Fault(
            ReadError::NotTracked,
            std::string("the ") + side + " names its elements in a way that cannot be tracked");
    return Child(root, "body") ? ReadEnd::Ok()
                               : ReadEnd::Fault(ReadError::WrongFormat, "no document text");
}

// Ids that are taken.
struct TakenIds {
    std::int64_t highest = 0;  // of those that changes and bookmarks share
    std::set<std::string> drawings;
};

TakenIds IdsOf(WordPackage& package) {
    TakenIds ids;
    for (const std::string& part : StoryParts(package)) {
        VisitElements(package.Tree(part), [&ids](const Node& node) {
            ids.highest =
                std::max<std::int64_t>(ids.highest, NumberOf(node.attribute("w:id").value(), 0));
            if (Is(node, "docPr"))
                ids.drawings.emplace(Attribute(node, "id"));
        });
    }
    return ids;
}

std::int64_t FirstId(const TakenIds& ids, std::int32_t prefix) {
    // Ids behind the digits asked for: two redlines with other digits share none up to here.
    constexpr std::int64_t kRoom = 100'000;
    return std::max(ids.highest, prefix * kRoom) + 1;
}

// The redline is a document, whatever the Modified is.
ReadEnd TakeType(WordPackage& package) {
    const std::string type = package.ContentType(package.MainPart());
    if (type.find("macroEnabled") != std::string::npos)
        return ReadEnd::Fault(ReadError::NotTracked,
                              "the modified holds macros, which a .docx may not");
    if (type.find("template.main") != std::string::npos)
        package.SetContentType(package.MainPart(),
                               "application/vnd.openxmlformats-officedocument.wordprocessingml."
                               "document.main+xml");
    return ReadEnd::Ok();
}

class DocxRedline {
  public:
    DocxRedline(WordPackage& original, WordPackage& modified, const RedlineRequest& request,
                RunWatcher* watcher, WrittenRedline& written, TakenIds taken)
        : original_(original),
          modified_(modified),
          importer_(original, modified, std::move(taken.drawings)),
          marks_(request.author, request.date, FirstId(taken, request.id_prefix)),
          looks_(importer_),
          state_{original, modified, importer_, marks_, watcher},
          large_texts_(request.large_texts),
          written_(written) {
        if (request.track_formatting)
            state_.looks = &looks_;
    }

    ReadEnd Write() {
        MergePart(original_.MainPart(), modified_.MainPart());
        MergeHeaders();
        if (state_.failed)
            return ReadEnd::Fault(ReadError::NotTracked,
                                  "the changes stand where no mark can be placed");
        if (state_.notes_imported)
            OrderNotes(modified_);
        if (!UniteAllPrefixes())
            return ReadEnd::Fault(ReadError::NotTracked,
                                  "the two documents name different things alike");
        written_.counts = marks_.Counts();
        Tell();
        written_.untracked[UntrackedCount::Signatures] = RemoveWordSignatures(modified_);
        original_ = {};  // its trees are as large as what is written now
        ReturnFreedMemory();
        std::optional<std::string> bytes = modified_.Save();
        if (!bytes)
            return ReadEnd::Fault(ReadError::TooLarge, "no memory for the package");
        written_.bytes = std::move(*bytes);
        return ReadEnd::Ok();
    }

  private:
    static Node Holder(const Node& root) {
        const Node body = Child(root, "body");
        return body ? body : root;
    }

    void MergePart(const std::string& original, const std::string& modified) {
        const RedlineCounts before = marks_.Counts();
        StoryWriter writer(state_, {original, modified});
        std::optional<TextsAlone> ahead;
        if (AreReadTwice(original, modified))
            ahead = AlignAhead(writer, {original, modified});
        const Node old_holder = Holder(original_.Tree(original));
        const Node new_holder = Holder(modified_.Tree(modified));
        writer.Merge(old_holder, new_holder, std::move(ahead));
        if (marks_.Counts() != before)
            Changed(original, modified);
    }

    // What is large, but for a tree that was changed.
    bool AreReadTwice(const std::string& original, const std::string& modified) const {
        return original == original_.MainPart() && !original_.IsEdited(original) &&
               !modified_.IsEdited(modified) &&
               original_.Size(original) + modified_.Size(modified) >= large_texts_;
    }

    // With one tree at a time.
    TextsAlone AlignAhead(const StoryWriter& writer, const PartPair& parts) {
        TextsAlone texts;
        const PerSide<WordPackage*> packages{&original_, &modified_};
        const PerSide<std::string_view> names{parts.original, parts.modified};
        modified_.Forget(parts.modified);
        for (const Side side : kBothSides) {
            texts.blocks[side] = writer.Texts(Holder(packages[side]->Tree(names[side])), side,
                                              packages[side]->Size(names[side]));
            packages[side]->Forget(names[side]);
        }
        texts.Align(state_.watcher);
        ReturnFreedMemory();
        return texts;
    }

    void Changed(const std::string& original, const std::string& modified) {
        modified_.Edit(modified);
        changed_.push_back({original, modified});
    }

    void MergeHeaders() {
        const HeaderPairs pairs = PairHeaders(original_, modified_);
        for (const PartPair& pair : pairs.pairs)
            MergePart(pair.original, pair.modified);
        for (const std::string& part : pairs.added) {
            StoryWriter(state_, {part, part})
                .MarkAll(modified_.Edit(part), TrackMark::Insert, false);
            ++frames_left_;
        }
        for (const LostHeader& lost : pairs.lost) {
            const std::string part = TakeHeader(original_, lost, modified_);
            if (part.empty()) {
                ++written_.headers_left_out;
                continue;
            }
            ++frames_left_;
            StoryWriter(state_, {lost.part, part})
                .MarkAll(modified_.Edit(part), TrackMark::Delete, false);
            Changed(lost.part, part);
        }
    }

    // What was brought over may use prefixes that only the Original declares.
    bool UniteAllPrefixes() {
        for (const char* kind : {"footnotes", "endnotes"}) {
            const std::string old_part = original_.Related(original_.MainPart(), kind);
            const std::string new_part = modified_.Related(modified_.MainPart(), kind);
            if (original_.Tree(old_part) && modified_.Tree(new_part) && state_.notes_imported)
                Changed(old_part, new_part);
        }
        return std::all_of(changed_.begin(), changed_.end(), [this](const PartPair& pair) {
            return UnitePrefixes(original_.Tree(pair.original), modified_.Edit(pair.modified));
        });
    }

    void Tell() {
        const LeftBehind& left = importer_.Left();
        auto& told = written_.untracked;
        told[UntrackedCount::Markers] = left.markers;
        told[UntrackedCount::Sections] = left.sections;
        told[UntrackedCount::Controls] = left.controls;
        told[UntrackedCount::FramesLeft] = frames_left_;
        told[UntrackedCount::HeadersLeftOut] = written_.headers_left_out;
        told[UntrackedCount::TablesTwice] = static_cast<std::int64_t>(state_.tables_twice);
        told[UntrackedCount::RowsTwice] = static_cast<std::int64_t>(state_.rows_twice);
    }

    WordPackage& original_;
    WordPackage& modified_;
    Importer importer_;
    RevisionMarks marks_;
    FormerLooks looks_;
    RedlineState state_;
    std::size_t large_texts_;
    WrittenRedline& written_;
    std::vector<PartPair> changed_;
    std::int32_t frames_left_ = 0;
};

}  // namespace

ReadEnd CheckTracked(const RedlineRequest& request, const WrittenRedline& written) {
    if (request.keep_tracked && written.resolved_before > 0)
        return ReadEnd::Fault(ReadError::NotTracked,
                              "the documents hold tracked changes already; without "
                              "--keep-tracked they are compared as accepted");
    return {};
}

ReadEnd WriteDocxRedline(const PerSide<std::string_view>& packages, const RedlineRequest& request,
                         RunWatcher* watcher, WrittenRedline& written) {
    PerSide<WordPackage> opened;
    for (const Side side : kBothSides) {
        if (ReadEnd end = opened[side].Open(packages[side]); !end.ok())
            return end;
        const bool old_side = side == Side::Original;
        if (ReadEnd end = CheckNames(opened[side], old_side ? "original" : "modified"); !end.ok())
            return end;
        written.resolved_before += AcceptAll(opened[side]);
    }
    if (ReadEnd end = CheckTracked(request, written); !end.ok())
        return end;
    if (ReadEnd end = TakeType(opened.modified); !end.ok())
        return end;
    return DocxRedline(opened.original, opened.modified, request, watcher, written,
                       IdsOf(opened.modified))
        .Write();
}

}  // namespace zorvane
