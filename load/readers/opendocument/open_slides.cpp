// OpenDocument presentations. Source: the public format description OpenDocument 1.3, part 3.
#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>

#include "load/readers/beside/slide_beside.h"
#include "load/readers/opendocument/odt_beside.h"
#include "load/readers/opendocument/open_package.h"
#include "load/readers/opendocument/open_text.h"
#include "load/readers/slides/slide_order.h"
#include "load/readers/slides/slide_range.h"
#include "load/readers/slides/slide_reader.h"

namespace zorvane {
namespace {

// Of a master page; they are gone through for each slide.
constexpr std::size_t kMostMargins = 8;

bool IsMarginClass(std::string_view name) {
    return name == "footer" || name == "header" || name == "date-time" || name == "page-number";
}

// Each slide has its own text of such a shape.
bool HasPageNumber(const pugi::xml_node& node, int depth) {
    if (Is(node, "page-number") || depth > kMaxDepth)
        return Is(node, "page-number");
    const auto all = node.children();
    return std::any_of(all.begin(), all.end(), [depth](const pugi::xml_node& child) {
        return HasPageNumber(child, depth + 1);
    });
}

ShapeRank RankOf(std::string_view presentation_class) {
    if (presentation_class.empty())
        return ShapeRank::Free;
    if (presentation_class == "title")
        return ShapeRank::Title;
    return IsMarginClass(presentation_class) ? ShapeRank::Margin : ShapeRank::Free;
}

bool IsShape(const pugi::xml_node& node) {
    const std::string_view name = node.name();
    return name.starts_with("draw:") || name.starts_with("dr3d:");
}

// A shape that is turned keeps its place in "translate (x y)".
std::string_view Translated(const pugi::xml_node& shape, std::size_t part) {
    constexpr std::string_view kWord = "translate";
    std::string_view text = Attribute(shape, "transform");
    const std::size_t at = text.find(kWord);
    if (at == std::string_view::npos)
        return {};
    text = text.substr(at + kWord.size());
    for (std::size_t i = 0; i <= part; ++i) {
        const std::size_t start = text.find_first_not_of(" (,");
        text = start == std::string_view::npos ? std::string_view() : text.substr(start);
        if (i < part)
            text = text.substr(std::min(text.find_first_of(" ,)"), text.size()));
    }
    return text.substr(0, text.find_first_of(" ,)"));
}

// In EMU; 0 for what is no length.
double OpenEmu(std::string_view text) {
    constexpr double kTwip = 635;
    return OpenLength(text).value_or(0) * kTwip;
}

// `axis` is "x" or "y"; of a line the place of its beginning counts.
double Place(const pugi::xml_node& shape, std::string_view axis) {
    std::string_view own = Attribute(shape, axis);
    if (own.empty())
        own = Attribute(shape, std::string(axis) + "1");
    return OpenEmu(own.empty() ? Translated(shape, axis == "x" ? 0 : 1) : own);
}

std::vector<PlacedShapes> Gather(const pugi::xml_node& holder, int depth);

// A group has no place of its own: it lies where its shapes do.
PlacedShapes GroupOf(const pugi::xml_node& group, int depth) {
    std::vector<PlacedShapes> inner = Gather(group, depth);
    PutInReadingOrder(inner);
    PlacedShapes item;
    LieAround(inner, item);
    item.shapes = Opened(inner);
    return item;
}

PlacedShapes ShapeOf(const pugi::xml_node& shape) {
    PlacedShapes item;
    item.rank = RankOf(Attribute(shape, "class"));
    item.left = Place(shape, "x");
    item.top = Place(shape, "y");
    item.right = item.left + OpenEmu(Attribute(shape, "width"));
    item.bottom = item.top + OpenEmu(Attribute(shape, "height"));
    item.shapes = {shape};
    return item;
}

std::vector<PlacedShapes> Gather(const pugi::xml_node& holder, int depth) {
    std::vector<PlacedShapes> items;
    if (depth > kMaxDepth)
        return items;
    for (const pugi::xml_node& node : holder.children()) {
        if (IsShape(node) && Attribute(node, "display") != "none")
            items.push_back(Is(node, "g") || Is(node, "a") ? GroupOf(node, depth + 1)
                                                           : ShapeOf(node));
    }
    return items;
}

std::vector<pugi::xml_node> ShapesIn(const pugi::xml_node& page) {
    std::vector<PlacedShapes> items = Gather(page, 0);
    PutInReadingOrder(items);
    return Opened(items);
}

OpenShapeStyle StyleOf(const pugi::xml_node& shape) {
    if (const pugi::xml_attribute name = shape.attribute("presentation:style-name"))
        return {"presentation", name.value()};
    return {"graphic", shape.attribute("draw:style-name").value()};
}

class OpenDeck {
  public:
    OpenDeck(Package& package, const SlideOptions& options, DocumentSink& sink,
             ReadMonitor& monitor)
        : package_(package), options_(options), writer_(sink), monitor_(monitor) {}

    ReadEnd Read();

  private:
    enum class Which : std::uint8_t { All, Notes, Own, Margins };
    struct Master {
        pugi::xml_node page;
        std::vector<pugi::xml_node> margins;
        bool used = false;
    };

    ReadEnd Open();
    void ReadMasters(const pugi::xml_node& style_root);
    ReadEnd Slide(std::int32_t number);
    void UseMaster(Master& master, const OpenFields& fields);
    OpenFields FieldsOf(const pugi::xml_node& page, std::int32_t number) const;
    void Shapes(const std::vector<pugi::xml_node>& shapes, Which which, OpenStyles& styles,
                const OpenFields& fields);
    void Shape(const pugi::xml_node& shape, OpenTextWriter& text, bool numbered);
    void Object(const pugi::xml_node& object, OpenTextWriter& text, bool numbered);
    bool ShowsBackground() const {
        return Attribute(properties_, "background-objects-visible") != "false";
    }
    bool IsWanted(const pugi::xml_node& shape, Which which) const;
    void NumberLine(OpenTextWriter& text, bool numbered);

    Package& package_;
    const SlideOptions& options_;
    ParagraphWriter writer_;
    ReadMonitor& monitor_;
    XmlPart content_;
    XmlPart style_part_;
    OpenStyles styles_{OpenColors::SeenOnWhite};         // of the slides
    OpenStyles master_styles_{OpenColors::SeenOnWhite};  // of the master pages
    std::vector<pugi::xml_node> pages_;
    std::unordered_map<std::string, Master> masters_;
    std::unordered_map<std::string, std::string> declarations_;  // texts of footers and dates
    std::vector<pugi::xml_node> used_masters_;                   // in the order of their first use
    std::unordered_set<std::string> objects_;
    pugi::xml_node properties_;  // of the slide's page
    std::int32_t shape_number_ = 0;
    ReadEnd end_;  // of an object on the slide
};

ReadEnd OpenDeck::Open() {
    if (IsEncryptedOpenDocument(package_))
        return ReadEnd::Fault(ReadError::Unsupported, "the document's encryption cannot be read");
    if (ReadEnd end = XmlPart::Read(package_, "content.xml", content_); !end.ok())
        return end;
    const pugi::xml_node presentation = Child(Child(content_.Root(), "body"), "presentation");
    if (!presentation)
        return ReadEnd::Fault(ReadError::WrongFormat, "the file holds no slides");
    pugi::xml_node style_root;
    if (XmlPart::Read(package_, "styles.xml", style_part_).ok())
        style_root = style_part_.Root();
    const auto add = [&](const pugi::xml_node& root, OpenStyles& styles) {
        styles.AddFonts(Child(root, "font-face-decls"));
        styles.Add(Child(style_root, "styles"));
        styles.Add(Child(root, "automatic-styles"));
    };
    add(content_.Root(), styles_);
    add(style_root, master_styles_);
    for (const pugi::xml_node& node : presentation.children()) {
        if (Is(node, "page"))
            pages_.push_back(node);
        else if (LocalName(node).ends_with("-decl"))
            declarations_.try_emplace(node.name() + std::string(Attribute(node, "name")),
                                      node.child_value());
    }
    ReadMasters(style_root);
    return ReadEnd::Ok();
}

void OpenDeck::ReadMasters(const pugi::xml_node& style_root) {
    for (const pugi::xml_node& page : Child(style_root, "master-styles").children()) {
        Master& master = masters_[std::string(Attribute(page, "name"))];
        master.page = page;
        for (const pugi::xml_node& shape : ShapesIn(page)) {
            const std::string_view name = Attribute(shape, "class");
            if ((IsMarginClass(name) || (name.empty() && HasPageNumber(shape, 0))) &&
                master.margins.size() < kMostMargins)
                master.margins.push_back(shape);
        }
    }
}

ReadEnd OpenDeck::Read() {
    if (ReadEnd end = Open(); !end.ok())
        return end;
    ReportOpenDocumentProperties(package_, writer_.Sink());
    PlacedSink placed(writer_.Sink());
    OdtBeside beside(package_, placed);
    const SlideRange range = RangeOf(options_, static_cast<std::int32_t>(pages_.size()));
    for (std::int32_t slide = range.first; slide <= range.last; ++slide) {
        if (!monitor_.Progress(slide - range.first, range.last - range.first + 1))
            return ReadEnd::Fault(ReadError::Cancelled);
        ReportOpenSlide(beside, placed, pages_[static_cast<std::size_t>(slide - 1)], slide,
                        options_.notes || options_.notes_only);
        if (ReadEnd end = Slide(slide); !end.ok())
            return end;
    }
    const OpenFields no_fields;
    OdtBeside behind(package_, placed);  // of another part
    placed.SetPlace(kBehindSlides);
    for (const pugi::xml_node& master : used_masters_) {
        const std::vector<pugi::xml_node> shapes = ShapesIn(master);
        Shapes(shapes, Which::Own, master_styles_, no_fields);
        for (const pugi::xml_node& shape : shapes) {
            if (IsWanted(shape, Which::Own))
                behind.PagePart(shape);
        }
    }
    return ReadEnd::Ok();
}

OpenFields OpenDeck::FieldsOf(const pugi::xml_node& page, std::int32_t number) const {
    const auto declared = [&](const std::string& kind) {
        const auto found =
            declarations_.find("presentation:" + kind + "-decl" +
                               std::string(Attribute(page, "use-" + kind + "-name")));
        return found == declarations_.end() ? std::string() : found->second;
    };
    OpenFields fields;
    fields.page = number;
    fields.pages = static_cast<std::int32_t>(pages_.size());
    fields.footer = declared("footer");
    fields.header = declared("header");
    fields.date = declared("date-time");
    return fields;
}

ReadEnd OpenDeck::Slide(std::int32_t number) {
    const pugi::xml_node page = pages_[static_cast<std::size_t>(number - 1)];
    const OpenFields fields = FieldsOf(page, number);
    OpenTextWriter text(writer_, styles_, fields);
    if (options_.show_numbers)
        text.Line("Slide " + std::to_string(number));
    shape_number_ = 0;
    if (!options_.notes_only) {
        const pugi::xml_node style = styles_.Find("drawing-page", Attribute(page, "style-name"));
        properties_ = Child(style, "drawing-page-properties");
        Shapes(ShapesIn(page), Which::All, styles_, fields);
        const auto master = masters_.find(std::string(Attribute(page, "master-page-name")));
        if (master != masters_.end())
            UseMaster(master->second, fields);
    }
    const pugi::xml_node notes = Child(page, "notes");
    if ((options_.notes || options_.notes_only) && notes) {
        if (options_.show_numbers && !options_.notes_only)
            text.Line("Notes:");
        shape_number_ = -1;  // notes are no shapes of the slide
        Shapes(ShapesIn(notes), Which::Notes, styles_, fields);
    }
    if (!end_.ok())
        return end_;
    if (writer_.Sink().Size() > kMostSlideText)
        return ReadEnd::Fault(ReadError::TooLarge, "the slides hold too much text");
    return ReadEnd::Ok();
}

void OpenDeck::UseMaster(Master& master, const OpenFields& fields) {
    Shapes(master.margins, Which::Margins, master_styles_, fields);
    if (master.used || !ShowsBackground())
        return;
    master.used = true;
    used_masters_.push_back(master.page);
}

bool OpenDeck::IsWanted(const pugi::xml_node& shape, Which which) const {
    const std::string_view name = Attribute(shape, "class");
    switch (which) {
        case Which::All:
            return true;
        case Which::Notes:
            return name == "notes";
        case Which::Own:
            return name.empty() && !HasPageNumber(shape, 0);
        case Which::Margins:
            if (name.empty())
                return ShowsBackground();
            return IsMarginClass(name) && name != "header" &&
                   Attribute(properties_, "display-" + std::string(name)) == "true";
    }
    return false;
}

void OpenDeck::Shapes(const std::vector<pugi::xml_node>& shapes, Which which, OpenStyles& styles,
                      const OpenFields& fields) {
    OpenTextWriter text(writer_, styles, fields);
    const bool numbered = options_.show_numbers && (which == Which::All || which == Which::Margins);
    for (const pugi::xml_node& shape : shapes) {
        if (IsWanted(shape, which))
            Shape(shape, text, numbered);
    }
}

// A chart or a formula: a document inside the document. Of others a picture is shown.
void OpenDeck::Object(const pugi::xml_node& object, OpenTextWriter& text, bool numbered) {
    const std::string folder(Attribute(object, "href"));
    const std::string name = ResolvePart("", folder + "/content.xml");
    XmlPart part;
    if (folder.empty() || !objects_.insert(name).second || !package_.Has(name))
        return;
    end_ = XmlPart::Read(package_, name, part);
    if (!end_.ok() || !HasOpenObjectWords(part.Root()))
        return;
    NumberLine(text, numbered);
    WriteOpenObject(part.Root(), text);
}

void OpenDeck::NumberLine(OpenTextWriter& text, bool numbered) {
    if (numbered)
        text.Line("Shape " + std::to_string(++shape_number_) + ":");
}

void OpenDeck::Shape(const pugi::xml_node& shape, OpenTextWriter& text, bool numbered) {
    pugi::xml_node content = shape;
    // What a frame holds are forms of one thing, the best first.
    for (const pugi::xml_node& form : shape.children()) {
        if (Is(form, "text-box")) {
            content = form;
            break;
        }
        if (Is(form, "table")) {
            NumberLine(text, numbered);
            text.Table(form);
            return;
        }
        if (Is(form, "object")) {
            Object(form, text, numbered);
            return;
        }
    }
    if (!text.HasText(content))
        return;
    NumberLine(text, numbered);
    text.Blocks(content, StyleOf(shape));
}

}  // namespace

ReadEnd ReadOpenDocumentSlides(Package& package, const SlideOptions& options, DocumentSink& sink,
                               ReadMonitor& monitor) {
    ReadEnd end = OpenDeck(package, options, sink, monitor).Read();
    ReportDamage(package, sink);
    return end;
}

}  // namespace zorvane
