// Sources: ECMA-376 part 1, 18 and 20.5; the public format description ODF 1.3, part 3, 9.
#include "load/readers/beside/sheet_beside.h"

#include <algorithm>
#include <memory>
#include <string>

#include "common/base/text_encoding.h"
#include "load/column_letters.h"
#include "load/readers/beside/package_beside.h"
#include "load/readers/beside/placed_sink.h"
#include "load/readers/container/xml_scanner.h"
#include "load/readers/ooxml/alternate_content.h"
#include "load/readers/protected_package.h"
#include "load/readers/sheets/sheet_progress.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;
using Relationships = std::unordered_map<std::string, Relationship>;
using Token = XmlScanner::Token;

constexpr std::size_t kMostComment = std::size_t{1} << 20;  // of one comment

// 0-based: 0 and 2 give "A3".
std::string CellName(std::int64_t column, std::int64_t row) {
    std::string name;
    AppendColumn(column, name);
    return name + std::to_string(row + 1);
}

class XlsxBeside {
  public:
    XlsxBeside(Package& package, DocumentSink& sink) : digests_(package), placed_(sink) {}

    void Sheet(const std::string& name, const std::string& part) {
        sheet_ = name;
        const Relationships relations = ReadRelationships(digests_.Parts(), part);
        bool has_links = false;
        std::vector<std::pair<std::string, std::string>> parts;  // in the order of their names
        for (const auto& [id, relation] : relations) {
            has_links = has_links || relation.type == "hyperlink";
            if (!relation.external)
                parts.emplace_back(relation.type, relation.target);
        }
        std::sort(parts.begin(), parts.end());
        for (const auto& [type, target] : parts) {
            if (type == "comments")
                Comments(target);
            else if (type == "drawing")
                Drawing(target);
            else if (type == "oleObject" || type == "package")
                Send(BesideKind::Object, "", FileOfPart(target), digests_.Of(target));
        }
        if (has_links)
            Links(part, relations);
    }

    /// The parts of the sheets, by their places in the book.
    static std::vector<std::string> SheetParts(Package& package) {
        std::string book = "xl/workbook.xml";
        for (const auto& [id, relation] : ReadRelationships(package, "")) {
            if (relation.type == "officeDocument" && !relation.external)
                book = relation.target;
        }
        const Relationships relations = ReadRelationships(package, book);
        std::vector<std::string> parts;
        XmlPart xml;
        if (!XmlPart::Read(package, book, xml).ok())
            return parts;
        for (const Node& sheet : Child(xml.Root(), "sheets").children()) {
            const auto found = relations.find(std::string(Attribute(sheet, "id")));
            if (Is(sheet, "sheet"))
                parts.push_back(found == relations.end() ? "" : found->second.target);
        }
        return parts;
    }

  private:
    void Send(BesideKind kind, std::string_view cell, std::string_view text, std::string digest) {
        placed_.SetPlace(cell.empty() ? sheet_ : sheet_ + "!" + std::string(cell));
        placed_.Beside({kind, kBesideHere, BesideText(text), std::move(digest)});
    }

    void Comments(const std::string& part) {
        XmlPart xml;
        if (!XmlPart::Read(digests_.Parts(), part, xml).ok())
            return;
        for (const Node& comment : Child(xml.Root(), "commentList").children()) {
            const std::string text = TextInside(Child(comment, "text"));
            if (Is(comment, "comment"))
                Send(BesideKind::Comment, Attribute(comment, "ref"), text, BesideDigest(text));
        }
    }

    // The links stand behind the cells, in a part that may be large.
    void Links(const std::string& part, const Relationships& relations) {
        const std::unique_ptr<PartStream> stream = digests_.Parts().Stream(part);
        if (stream == nullptr)
            return;
        XmlScanner scanner(*stream);
        // Whoever reads the cells tells of a part that is damaged.
        static_cast<void>(scanner.ForAllTokens([&](Token token) {
            if (token == Token::Start && scanner.Name() == "hyperlink")
                Link(scanner, relations);
        }));
    }

    void Link(const XmlScanner& scanner, const Relationships& relations) {
        const auto found = relations.find(std::string(scanner.Attribute("id")));
        std::string target = found == relations.end() ? std::string() : found->second.target;
        std::string place;
        AppendDecoded(scanner.Attribute("location"), place);
        if (!place.empty())
            target += "#" + place;
        if (!target.empty())
            Send(BesideKind::Link, scanner.Attribute("ref"), target, BesideDigest(target));
    }

    void Drawing(const std::string& part) {
        XmlPart xml;
        if (!XmlPart::Read(digests_.Parts(), part, xml).ok())
            return;
        Anchors(xml.Root(), ReadRelationships(digests_.Parts(), part), 0);
    }

    void Anchors(const Node& parent, const Relationships& relations, int depth) {
        if (depth > kMaxDepth)
            return;
        for (const Node& anchor : parent.children()) {
            if (Is(anchor, "AlternateContent")) {
                Anchors(ChosenForm(anchor), relations, depth + 1);
                continue;
            }
            const Node from = Child(anchor, "from");
            const std::string cell =
                from
                    ? CellName(std::clamp(NumberOf(Child(from, "col").text().get(), 0), 0, 99999),
                               std::clamp(NumberOf(Child(from, "row").text().get(), 0), 0, 9999999))
                    : std::string();
            Anchored(anchor, cell, relations, 0);
        }
    }

    void Anchored(const Node& node, const std::string& cell, const Relationships& relations,
                  int depth) {
        if (depth > kMaxDepth)
            return;
        for (const Node& child : node.children()) {
            if (Is(child, "blip"))
                Part(BesideKind::Picture, cell, relations, Attribute(child, "embed"));
            else if (Is(child, "chart"))
                Part(BesideKind::Chart, cell, relations, Attribute(child, "id"));
            else if (Is(child, "sp"))
                Shape(child, cell);
            const bool forms = Is(child, "AlternateContent");
            Anchored(forms ? ChosenForm(child) : child, cell, relations, depth + 1);
        }
    }

    void Part(BesideKind kind, const std::string& cell, const Relationships& relations,
              std::string_view relation) {
        const auto found = relations.find(std::string(relation));
        if (found == relations.end())
            return;
        const std::string& target = found->second.target;
        Send(kind, cell, FileOfPart(target),
             kind == BesideKind::Picture ? digests_.Of(target) : digests_.OfText(target));
    }

    void Shape(const Node& shape, const std::string& cell) {
        const std::string text(Trim(TextInside(Child(shape, "txBody"))));
        const std::string_view kind = Attribute(Child(Child(shape, "spPr"), "prstGeom"), "prst");
        Send(BesideKind::Drawing, cell, text.empty() ? kind : std::string_view(text),
             BesideDigest(std::string(kind) + "\n" + text));
    }

    PartDigests digests_;
    PlacedSink placed_;
    std::string sheet_;
};

// Reads the sheets of content.xml as a stream, for it may be large.
class OdsBeside {
  public:
    OdsBeside(Package& package, DocumentSink& sink, std::vector<std::string> names)
        : digests_(package), placed_(sink), names_(std::move(names)) {}

    void Run() {
        const std::unique_ptr<PartStream> stream = digests_.Parts().Stream("content.xml");
        if (stream == nullptr)
            return;
        XmlScanner scanner(*stream);
        // Whoever reads the cells tells of a part that is damaged.
        static_cast<void>(scanner.ForAllTokens([&](Token token) { Take(token, scanner); }));
    }

  private:
    void Take(Token token, const XmlScanner& scanner) {
        if (token == Token::Start)
            Start(scanner);
        if (token == Token::End || (token == Token::Start && scanner.SelfClosing()))
            End(scanner.Name());
        if (token == Token::Text && words_ != nullptr && words_->size() < kMostComment)
            scanner.AppendText(*words_);
    }

    static bool IsAboutComment(std::string_view name) {
        return name == "creator" || name == "date" || name == "date-string" ||
               name == "creator-initials";
    }

    static std::int64_t Repeats(const XmlScanner& scanner, std::string_view attribute) {
        return std::clamp(NumberOf(scanner.Attribute(attribute), 1), 1, 10'000'000);
    }

    void Start(const XmlScanner& scanner) {
        const std::string_view name = scanner.Name();
        if (name == "table" && ++tables_ == 1) {
            std::string sheet;
            AppendDecoded(scanner.Attribute("name"), sheet);
            shown_ = std::find(names_.begin(), names_.end(), sheet) != names_.end();
            sheet_ = sheet;
            row_ = column_ = 0;
        } else if (name == "table-row") {
            repeats_row_ = Repeats(scanner, "number-rows-repeated");
            column_ = 0;
        } else if (name == "table-cell" || name == "covered-table-cell") {
            repeats_column_ = Repeats(scanner, "number-columns-repeated");
        } else if (name == "annotation") {
            in_comment_ = true;
            comment_.clear();
            author_.clear();
            words_ = &comment_;
        } else if (in_comment_ && IsAboutComment(name)) {
            words_ = name == "creator" ? &author_ : nullptr;
        } else if (shown_ && tables_ > 0) {
            Thing(scanner, name);
        }
    }

    void Thing(const XmlScanner& scanner, std::string_view name) {
        std::string address;
        AppendDecoded(scanner.Attribute("href"), address);
        if (name == "object" || name == "plugin")
            objects_ = frames_;
        // Inside of a frame that has an object its picture is a likeness only.
        const bool likeness = name == "image" && objects_ > 0;
        if (name == "frame")
            ++frames_;
        if (address.empty() || likeness)
            return;
        if (name == "a") {
            Send(BesideKind::Link, address, BesideDigest(address));
        } else if (name == "image") {
            Send(BesideKind::Picture, FileOfPart(address), PartDigest(address));
        } else if (name == "object") {
            const std::string part = ResolvePart("content.xml", address) + "/content.xml";
            const bool chart = digests_.Parts().Has(part);
            Send(chart ? BesideKind::Chart : BesideKind::Object, FileOfPart(address),
                 chart ? digests_.OfText(part) : PartDigest(address));
        } else if (name == "object-ole" || name == "plugin") {
            Send(BesideKind::Object, FileOfPart(address), PartDigest(address));
        }
    }

    void End(std::string_view name) {
        if (name == "table") {
            tables_ = std::max(tables_ - 1, 0);
        } else if (name == "table-row") {
            row_ += repeats_row_;
        } else if (name == "table-cell" || name == "covered-table-cell") {
            column_ += repeats_column_;
        } else if (name == "frame") {
            objects_ = 0;
            frames_ = std::max(frames_ - 1, 0);
        } else if (name == "annotation") {
            in_comment_ = false;
            words_ = nullptr;
            if (!author_.empty())
                comment_ = author_ + ": " + comment_;
            if (shown_)
                Send(BesideKind::Comment, comment_, BesideDigest(comment_));
        } else if (in_comment_ && IsAboutComment(name)) {
            words_ = &comment_;
        }
    }

    std::string PartDigest(const std::string& address) {
        const std::string part = ResolvePart("content.xml", address);
        return digests_.Parts().Has(part) ? digests_.Of(part) : BesideDigest(address);
    }

    void Send(BesideKind kind, std::string_view text, std::string digest) {
        placed_.SetPlace(sheet_ + "!" + CellName(column_, row_));
        placed_.Beside({kind, kBesideHere, BesideText(text), std::move(digest)});
    }

    PartDigests digests_;
    PlacedSink placed_;
    std::vector<std::string> names_;
    std::string sheet_;
    bool shown_ = false;
    bool in_comment_ = false;
    std::string* words_ = nullptr;  ///< where the words of a comment go
    std::string comment_;
    std::string author_;
    int tables_ = 0;
    int frames_ = 0;   ///< open ones
    int objects_ = 0;  ///< the frame whose object was told
    std::int64_t row_ = 0;
    std::int64_t column_ = 0;
    std::int64_t repeats_row_ = 1;
    std::int64_t repeats_column_ = 1;
};

ReadEnd ReportHiddenSheets(Workbook& book, const std::vector<std::size_t>& chosen,
                           DocumentSink& sink, ReadMonitor& monitor) {
    SheetProgress progress(monitor, std::max<std::size_t>(book.Sheets().size(), 1));
    for (std::size_t index = 0; index < book.Sheets().size(); ++index) {
        progress.BeginNext();
        const SheetInfo& sheet = book.Sheets()[index];
        if (!sheet.hidden || std::find(chosen.begin(), chosen.end(), index) != chosen.end())
            continue;
        BesideHash hash;
        const auto row = [&hash](const std::vector<std::string_view>& cells) {
            for (const std::string_view cell : cells) {
                hash.Add(cell);
                hash.Add("\t");
            }
            hash.Add("\n");
            return true;
        };
        ReadEnd end = book.ReadSheet(index, {}, row, progress);
        if (end.error == ReadError::Cancelled)
            return end;
        sink.Beside(
            {BesideKind::HiddenText, 0, BesideText(sheet.name + ": hidden sheet"), hash.Digest()});
    }
    return ReadEnd::Ok();
}

void ReportPackage(Package& package, Workbook& book, const std::vector<std::size_t>& chosen,
                   DocumentSink& sink) {
    if (package.Has("content.xml")) {
        ReportOpenDocumentProperties(package, sink);
        std::vector<std::string> names;
        names.reserve(chosen.size());
        for (const std::size_t index : chosen)
            names.push_back(book.Sheets()[index].name);
        OdsBeside(package, sink, std::move(names)).Run();
        return;
    }
    ReportOfficeProperties(package, sink);
    XlsxBeside sheets(package, sink);
    const std::vector<std::string> parts = XlsxBeside::SheetParts(package);
    for (const std::size_t index : chosen) {
        if (index < parts.size() && !parts[index].empty())
            sheets.Sheet(book.Sheets()[index].name, parts[index]);
    }
}

}  // namespace

ReadEnd ReportSheetBeside(std::string_view bytes, std::string_view password, Workbook& book,
                          const std::vector<std::size_t>& chosen, DocumentSink& sink,
                          ReadMonitor& monitor) {
    std::string plain;
    if (ReadEnd end = OpenProtected(bytes, password, plain); !end.ok())
        return end;
    if (!plain.empty())
        bytes = plain;
    if (const std::unique_ptr<Package> package = Package::Open(bytes)) {
        ReportPackage(*package, book, chosen, sink);
        ReportDamage(*package, sink);
    }
    return ReportHiddenSheets(book, chosen, sink, monitor);
}

}  // namespace zorvane
