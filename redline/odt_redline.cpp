#include "redline/odt_redline.h"

#include <algorithm>
#include <map>
#include <optional>

#include "common/platform/freed_memory.h"
#include "redline/import.h"
#include "redline/odt_resolve.h"
#include "redline/odt_writer.h"
#include "redline/signatures.h"
#include "redline/xml_tools.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

const std::string kContent = "content.xml";
const std::string kStylePart = "styles.xml";
constexpr const char* kTextNames = "urn:oasis:names:tc:opendocument:xmlns:text:1.0";

Node BodyOf(WordPackage& package) {
    return Child(Child(package.Tree(kContent), "body"), "text");
}

// By page and kind, those of pages with their names.
std::map<std::string, Node> HeadersOf(WordPackage& package) {
    std::map<std::string, Node> headers;
    for (const Node& page : Child(package.Tree(kStylePart), "master-styles").children()) {
        for (const Node& child : page.children()) {
            const std::string_view name = LocalName(child);
            if (name.starts_with("header") || name.starts_with("footer"))
                headers[std::string(Attribute(page, "name")) + "|" + std::string(name)] = child;
        }
    }
    return headers;
}

ReadEnd CheckOdtNames(WordPackage& package, const char* side) {
    for (const std::string& part : {kContent, kStylePart}) {
        if (package.Tree(part).attribute("xmlns:text").value() != std::string_view(kTextNames))
            return ReadEnd::Fault(
                ReadError::NotTracked,
                std::string("the ") + side + " names its elements in a way that cannot be tracked");
    }
    return BodyOf(package) ? ReadEnd::Ok()
                           : ReadEnd::Fault(ReadError::WrongFormat, "no document text");
}

// As if all tracked changes were accepted.
std::int32_t Prepare(WordPackage& package) {
    std::int32_t changes = 0;
    const auto take = [&](const Node& story, const std::string& part) {
        FormText(story);
        const std::int32_t found =
            ResolveOdt(story, Resolution::Accept,
                       TrackedRowStyles(Child(package.Tree(part), "automatic-styles")));
        changes += found;
    };
    take(BodyOf(package), kContent);
    for (const auto& [name, story] : HeadersOf(package))
        take(story, kStylePart);
    return changes;
}

void Declare(Node root) {
    if (!root.attribute("xmlns:dc"))
        root.append_attribute("xmlns:dc") = "http://purl.org/dc/elements/1.1/";
}

class OdtRedline {
  public:
    OdtRedline(WordPackage& original, WordPackage& modified, const RedlineRequest& request,
               RunWatcher* watcher, WrittenRedline& written)
        : original_(original),
          modified_(modified),
          importer_(original, modified),
          state_{original, modified, importer_, StampOf(request), watcher},
          large_texts_(request.large_texts),
          written_(written) {}

    ReadEnd Write() {
        std::optional<TextsAlone> ahead;
        if (AreReadTwice())
            ahead = AlignAhead();
        OdtWriter body(state_, kContent, BodyOf(modified_));
        body.Merge(BodyOf(original_), BodyOf(modified_), std::move(ahead));
        if (body.Changed())
            modified_.Edit(kContent);
        MergeHeaders();
        if (state_.failed)
            return ReadEnd::Fault(ReadError::NotTracked,
                                  "the changes stand where no mark can be placed");
        for (const std::string& part : {kContent, kStylePart}) {
            Declare(modified_.Tree(part));
            if (!UnitePrefixes(original_.Tree(part), modified_.Tree(part)))
                return ReadEnd::Fault(ReadError::NotTracked,
                                      "the two documents name different things alike");
        }
        return Save();
    }

  private:
    // What is large, but for trees that were changed when tracked changes were accepted.
    bool AreReadTwice() const {
        return written_.resolved_before == 0 &&
               original_.Size(kContent) + modified_.Size(kContent) >= large_texts_;
    }

    // With one tree at a time.
    TextsAlone AlignAhead() {
        TextsAlone texts;
        const PerSide<WordPackage*> packages{&original_, &modified_};
        modified_.Forget(kContent);
        for (const Side side : kBothSides) {
            OdtReader reader = ReaderOf(state_, side);
            reader.reading.with_trees = false;
            reader.reading.text_room = packages[side]->Size(kContent);
            FormText(BodyOf(*packages[side]));
            texts.blocks[side] = reader.Blocks(BodyOf(*packages[side]));
            packages[side]->Forget(kContent);
        }
        texts.Align(state_.watcher);
        ReturnFreedMemory();
        for (const Side side : kBothSides)
            FormText(BodyOf(*packages[side]));
        return texts;
    }

    OdtStamp StampOf(const RedlineRequest& request) {
        constexpr std::int64_t kRoom = 100'000;
        OdtStamp stamp{request.author, request.date, request.id_prefix * kRoom + 1};
        for (const std::string& part : {kContent, kStylePart}) {
            VisitElements(modified_.Tree(part), [&stamp](const Node& node) {
                for (const char* name : {"xml:id", "text:id"}) {
                    if (const pugi::xml_attribute id = node.attribute(name))
                        stamp.taken.emplace(id.value());
                }
            });
        }
        return stamp;
    }

    void MergeHeaders() {
        std::map<std::string, Node> old_headers = HeadersOf(original_);
        for (const auto& [name, header] : HeadersOf(modified_)) {
            pugi::xml_document nothing;
            const Node empty = nothing.append_child("style:header").append_child("text:p").parent();
            const auto partner = old_headers.find(name);
            OdtWriter writer(state_, kStylePart, header);
            writer.Merge(partner == old_headers.end() ? empty : partner->second, header);
            if (writer.Changed())
                modified_.Edit(kStylePart);
            if (partner == old_headers.end())
                ++frames_left_;
            else
                old_headers.erase(partner);
        }
        for (const auto& [name, header] : old_headers)
            TakeHeader(name, header);
    }

    // One of the Original goes where the Modified has a page of that name.
    void TakeHeader(const std::string& name, const Node& header) {
        if (OdtTextOf(header).empty())
            return;
        const std::string page_name = name.substr(0, name.find('|'));
        for (Node page : Child(modified_.Tree(kStylePart), "master-styles").children()) {
            if (Attribute(page, "name") != page_name)
                continue;
            Node made = PlaceForHeader(page, header);
            OdtWriter writer(state_, kStylePart, made);
            made.append_child("text:p");
            writer.Merge(header, made);
            modified_.Edit(kStylePart);
            ++frames_left_;
            return;
        }
        ++written_.headers_left_out;
    }

    // Headers stand in front of footers, those of all pages in front of those of some.
    static Node PlaceForHeader(Node page, const Node& header) {
        constexpr const char* kOrder[] = {"header", "header-left", "header-first",
                                          "footer", "footer-left", "footer-first"};
        const auto rank = [&](const Node& node) {
            return std::find(std::begin(kOrder), std::end(kOrder), LocalName(node)) -
                   std::begin(kOrder);
        };
        for (const Node& child : page.children()) {
            if (rank(child) > rank(header))
                return page.insert_child_before(header.name(), child);
        }
        return page.append_child(header.name());
    }

    void Tell() {
        auto& told = written_.untracked;
        told[UntrackedCount::Markers] = static_cast<std::int64_t>(state_.markers_left_out);
        told[UntrackedCount::FramesLeft] = static_cast<std::int64_t>(frames_left_);
        told[UntrackedCount::HeadersLeftOut] = written_.headers_left_out;
        told[UntrackedCount::TablesTwice] = static_cast<std::int64_t>(state_.tables_twice);
        told[UntrackedCount::RowsTwice] = static_cast<std::int64_t>(state_.rows_twice);
    }

    ReadEnd Save() {
        written_.counts = state_.counts;
        Tell();
        written_.untracked[UntrackedCount::Signatures] = RemoveOdtSignatures(modified_);
        original_ = {};  // its tree is as large as what is written now
        ReturnFreedMemory();
        std::optional<std::string> bytes = modified_.Save();
        if (!bytes)
            return ReadEnd::Fault(ReadError::TooLarge, "no memory for the package");
        written_.bytes = std::move(*bytes);
        return ReadEnd::Ok();
    }

    WordPackage& original_;
    WordPackage& modified_;
    OdtImporter importer_;
    OdtState state_;
    std::size_t large_texts_;
    WrittenRedline& written_;
    std::size_t frames_left_ = 0;
};

}  // namespace

ReadEnd WriteOdtRedline(const PerSide<std::string_view>& packages, const RedlineRequest& request,
                        RunWatcher* watcher, WrittenRedline& written) {
    PerSide<WordPackage> opened;
    for (const Side side : kBothSides) {
        if (ReadEnd end = opened[side].OpenParts(packages[side]); !end.ok())
            return end;
        const bool old_side = side == Side::Original;
        if (ReadEnd end = CheckOdtNames(opened[side], old_side ? "original" : "modified");
            !end.ok())
            return end;
        const std::int32_t changes = Prepare(opened[side]);
        written.resolved_before += changes;
        if (changes > 0 && !old_side) {
            opened[side].Edit(kContent);
            opened[side].Edit(kStylePart);
        }
    }
    if (ReadEnd end = CheckTracked(request, written); !end.ok())
        return end;
    return OdtRedline(opened.original, opened.modified, request, watcher, written).Write();
}

}  // namespace zorvane
