#include "load/readers/opendocument/open_math.h"

#include "common/base/text_encoding.h"
#include "load/readers/container/xml_part.h"

namespace zorvane {
namespace {

void AddText(const pugi::xml_node& node, int depth, std::string& text) {
    if (depth >= kMaxDepth)
        return;
    for (const pugi::xml_node& child : node.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata)
            text += Trim(child.value());
        else if (!Is(child, "annotation") && !Is(child, "annotation-xml"))
            AddText(child, depth + 1, text);
    }
}

}  // namespace

std::string OpenMathText(const pugi::xml_node& math) {
    std::string text;
    AddText(math, 0, text);
    return text;
}

}  // namespace zorvane
