#include "load/readers/beside/formula_text.h"

#include <array>
#include <string_view>
#include <vector>

#include "common/base/text_encoding.h"
#include "load/readers/container/xml_part.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

constexpr std::size_t kLongest = std::size_t{1} << 16;
constexpr int kDeepest = 100;
constexpr std::string_view kRoot = "\xE2\x88\x9A";
constexpr std::string_view kIntegral = "\xE2\x88\xAB";

// The operands that a structure has, by their names in Office Open XML; MathML goes by their order.
struct ShapeRow {
    std::string_view name;
    std::array<std::string_view, 3> operands;
    /// What stands in front of each operand.
    std::array<std::string_view, 3> joints;
};
constexpr ShapeRow kShapes[] = {
    {"sSup", {"e", "sup", ""}, {"", "^", ""}},
    {"sSub", {"e", "sub", ""}, {"", "_", ""}},
    {"sSubSup", {"e", "sub", "sup"}, {"", "_", "^"}},
    {"sPre", {"sub", "sup", "e"}, {"_", "^", ""}},
    {"f", {"num", "den", ""}, {"", "/", ""}},
    {"limLow", {"e", "lim", ""}, {"", "_", ""}},
    {"limUpp", {"e", "lim", ""}, {"", "^", ""}},
    {"func", {"fName", "e", ""}, {"", " ", ""}},
    {"msup", {"", "", ""}, {"", "^", ""}},
    {"msub", {"", "", ""}, {"", "_", ""}},
    {"msubsup", {"", "", ""}, {"", "_", "^"}},
    {"munder", {"", "", ""}, {"", "_", ""}},
    {"mover", {"", "", ""}, {"", "^", ""}},
    {"munderover", {"", "", ""}, {"", "_", "^"}},
    {"mfrac", {"", "", ""}, {"", "/", ""}},
};

class FormulaWriter {
  public:
    std::string Write(const Node& formula) {
        Children(formula);
        return std::move(text_);
    }

  private:
    void Children(const Node& node) {
        for (const Node& child : node.children())
            Any(child);
    }

    void Any(const Node& node) {
        if (depth_ >= kDeepest || text_.size() > kLongest)
            return;
        ++depth_;
        Inside(node);
        --depth_;
    }

    void Inside(const Node& node) {
        if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) {
            text_ += Trim(node.value());
            return;
        }
        const std::string_view name = LocalName(node);
        if (!name.ends_with("Pr") && !name.starts_with("annotation"))
            Element(node, name);
    }

    void Element(const Node& node, std::string_view name) {
        for (const ShapeRow& shape : kShapes) {
            if (name == shape.name)
                return Shape(node, shape);
        }
        if (name == "rad" || name == "msqrt" || name == "mroot")
            Root(node, name);
        else if (name == "nary")
            Nary(node);
        else if (name == "d" || name == "mfenced")
            Fenced(node, name == "d");
        else if (name == "m" || name == "eqArr" || name == "mtable")
            Rows(node);
        else if (name == "acc" || name == "groupChr" || name == "bar")
            Accent(node, name);
        else
            Children(node);
    }

    static std::vector<Node> Elements(const Node& node) {
        std::vector<Node> elements;
        for (const Node& child : node.children()) {
            if (child.type() == pugi::node_element && !LocalName(child).ends_with("Pr"))
                elements.push_back(child);
        }
        return elements;
    }

    // In parentheses unless it is one letter.
    void Operand(const Node& node) {
        if (!node)
            return;
        const std::size_t begin = text_.size();
        Any(node);
        const std::string operand = text_.substr(begin);
        if (operand.empty() || ToUtf16(operand).size() > 1)
            text_ = text_.substr(0, begin) + "(" + operand + ")";
    }

    void Shape(const Node& node, const ShapeRow& shape) {
        const std::vector<Node> elements = Elements(node);
        const bool named = !shape.operands[0].empty();
        for (std::size_t i = 0; i < shape.operands.size(); ++i) {
            const Node operand = named                 ? Child(node, shape.operands[i])
                                 : i < elements.size() ? elements[i]
                                                       : Node();
            if (!operand)
                continue;
            text_ += shape.joints[i];
            Operand(operand);
        }
    }

    void Root(const Node& node, std::string_view name) {
        const std::vector<Node> elements = Elements(node);
        Node degree;
        if (name == "rad")
            degree = Child(node, "deg");
        else if (name == "mroot" && elements.size() > 1)
            degree = elements[1];
        const std::size_t begin = text_.size();
        if (degree)
            Any(degree);
        const std::string shown = text_.substr(begin);
        text_.resize(begin);
        if (!shown.empty())
            text_ += "[" + shown + "]";
        text_ += kRoot;
        text_ += '(';
        if (name == "rad")
            Any(Child(node, "e"));
        else if (name == "mroot" && !elements.empty())
            Any(elements[0]);
        else
            Children(node);
        text_ += ')';
    }

    static std::string_view Property(const Node& node, std::string_view properties,
                                     std::string_view name, std::string_view otherwise) {
        const Node property = Child(Child(node, properties), name);
        return property ? Attribute(property, "val") : otherwise;
    }

    void Nary(const Node& node) {
        text_ += Property(node, "naryPr", "chr", kIntegral);
        for (const auto& [name, joint] : {std::pair<std::string_view, char>{"sub", '_'},
                                          std::pair<std::string_view, char>{"sup", '^'}}) {
            const Node limit = Child(node, name);
            if (Elements(limit).empty())
                continue;
            text_ += joint;
            Operand(limit);
        }
        text_ += ' ';
        Any(Child(node, "e"));
    }

    void Fenced(const Node& node, bool office) {
        const auto mark = [&](std::string_view office_name, std::string_view math_name,
                              std::string_view otherwise) {
            if (office)
                return Property(node, "dPr", office_name, otherwise);
            const std::string_view value = Attribute(node, math_name);
            return value.empty() ? otherwise : value;
        };
        text_ += mark("begChr", "open", "(");
        bool first = true;
        for (const Node& element : Elements(node)) {
            if (!first)
                text_ += mark("sepChr", "separators", office ? "|" : ",");
            first = false;
            Any(element);
        }
        text_ += mark("endChr", "close", ")");
    }

    void Rows(const Node& node) {
        text_ += '[';
        bool first_row = true;
        for (const Node& row : Elements(node)) {
            text_ += first_row ? "" : "; ";
            first_row = false;
            bool first = true;
            for (const Node& cell : Elements(row)) {
                const bool cells = Is(row, "mr") || Is(row, "mtr");
                text_ += first || !cells ? "" : ", ";
                first = false;
                Any(cell);
            }
        }
        text_ += ']';
    }

    void Accent(const Node& node, std::string_view name) {
        Operand(Child(node, "e"));
        text_ += Property(node, std::string(name) + "Pr", "chr", name == "bar" ? "_" : "^");
    }

    std::string text_;
    int depth_ = 0;
};

}  // namespace

std::string FormulaStructure(const pugi::xml_node& formula) {
    return FormulaWriter().Write(formula);
}

}  // namespace zorvane
