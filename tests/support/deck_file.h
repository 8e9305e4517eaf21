// Slide decks made in memory: one layout, one master, one theme, and what a test adds.
#pragma once

#include <string>
#include <string_view>

#include "tests/support/zip_file.h"

namespace zorvane {

class Deck {
  public:
    /// `shapes` stand inside the slide's tree of shapes; `relations` are written by `Relation`.
    void AddSlide(const std::string& shapes, const std::string& relations = "",
                  const std::string& attributes = "") {
        const std::string number = std::to_string(++slides_);
        Add("ppt/slides/slide" + number + ".xml", Page("p:sld", shapes, attributes));
        Add("ppt/slides/_rels/slide" + number + ".xml.rels",
            Relations(Relation("rL", "slideLayout", "../slideLayouts/layout.xml") + relations));
        // Ids descend, so that only the list gives the order.
        const std::string id = "r" + std::to_string(1000 - slides_);
        list_ += "<p:sldId id=\"" + std::to_string(255 + slides_) + "\" r:id=\"" + id + "\"/>";
        deck_relations_ += Relation(id, "slide", "slides/slide" + number + ".xml");
    }
    void Add(const std::string& name, const std::string& content) {
        parts_.emplace_back(name, content);
    }

    std::string Finish() {
        Add("_rels/.rels", Relations(Relation("r1", "officeDocument", "ppt/presentation.xml")));
        Add("ppt/presentation.xml",
            "<p:presentation" + Namespaces() + " " + deck_attributes + "><p:sldIdLst>" + list_ +
                "</p:sldIdLst><p:defaultTextStyle><a:lvl1pPr><a:defRPr sz=\"1800\"/></a:lvl1pPr>"
                "</p:defaultTextStyle></p:presentation>");
        Add("ppt/_rels/presentation.xml.rels", Relations(deck_relations_));
        Add("ppt/slideLayouts/layout.xml", Page("p:sldLayout", layout_shapes, ""));
        Add("ppt/slideLayouts/_rels/layout.xml.rels",
            Relations(Relation("r1", "slideMaster", "../slideMasters/master.xml")));
        Add("ppt/slideMasters/master.xml", Master());
        Add("ppt/slideMasters/_rels/master.xml.rels",
            Relations(Relation("r1", "theme", "../theme/theme.xml") +
                      Relation("r2", "slideLayout", "../slideLayouts/layout.xml")));
        Add("ppt/theme/theme.xml", kTheme);
        return MakeZip(parts_);
    }

    static std::string Relation(const std::string& id, const std::string& type,
                                const std::string& target) {
        return "<Relationship Id=\"" + id + "\" Type=\"http://x/" + type + "\" Target=\"" + target +
               "\"/>";
    }
    static std::string Relations(const std::string& all) {
        return "<Relationships>" + all + "</Relationships>";
    }
    static std::string Namespaces() {
        return " xmlns:a=\"urn:a\" xmlns:p=\"urn:p\" xmlns:r=\"urn:r\" xmlns:mc=\"urn:mc\"";
    }
    static std::string Page(const std::string& element, const std::string& shapes,
                            const std::string& attributes) {
        return "<" + element + Namespaces() + " " + attributes + "><p:cSld><p:spTree>" + shapes +
               "</p:spTree></p:cSld></" + element + ">";
    }

    // One shape; `placeholder` such as "type=\"title\"", or empty; `place` in EMU "x,y" or empty.
    static std::string Shape(const std::string& placeholder, const std::string& paragraphs,
                             int x = 0, int y = 0) {
        const std::string mark = placeholder.empty() ? "" : "<p:ph " + placeholder + "/>";
        return "<p:sp><p:nvSpPr><p:cNvPr id=\"9\" name=\"n\"/><p:nvPr>" + mark +
               "</p:nvPr></p:nvSpPr><p:spPr><a:xfrm><a:off x=\"" + std::to_string(x) + "\" y=\"" +
               std::to_string(y) +
               "\"/><a:ext cx=\"2000000\" cy=\"900000\"/></a:xfrm></p:spPr><p:txBody><a:bodyPr/>" +
               paragraphs + "</p:txBody></p:sp>";
    }
    static std::string Paragraph(const std::string& text, const std::string& properties = "") {
        return "<a:p>" + properties + "<a:r><a:t>" + text + "</a:t></a:r></a:p>";
    }
    static std::string Text(const std::string& text, int x = 0, int y = 0) {
        return Shape("", Paragraph(text), x, y);
    }

    std::string layout_shapes;
    std::string master_shapes;
    std::string deck_attributes;

  private:
    static constexpr const char* kTheme =
        "<a:theme xmlns:a=\"urn:a\"><a:themeElements><a:clrScheme name=\"c\"><a:dk1><a:sysClr "
        "val=\"windowText\" lastClr=\"000000\"/></a:dk1><a:lt1><a:srgbClr val=\"FFFFFF\"/></a:lt1>"
        "<a:accent1><a:srgbClr val=\"4472C4\"/></a:accent1><a:hlink><a:srgbClr val=\"0563C1\"/>"
        "</a:hlink></a:clrScheme><a:fontScheme name=\"f\"><a:majorFont><a:latin "
        "typeface=\"Head\"/></a:majorFont><a:minorFont><a:latin typeface=\"Text\"/></a:minorFont>"
        "</a:fontScheme></a:themeElements></a:theme>";

    std::string Master() const {
        return "<p:sldMaster" + Namespaces() + "><p:cSld><p:spTree>" + master_shapes +
               "</p:spTree></p:cSld><p:clrMap bg1=\"lt1\" tx1=\"dk1\" accent1=\"accent1\" "
               "hlink=\"hlink\"/><p:txStyles><p:titleStyle><a:lvl1pPr algn=\"ctr\"><a:buNone/>"
               "<a:defRPr sz=\"4400\"><a:solidFill><a:schemeClr val=\"tx1\"/></a:solidFill>"
               "<a:latin typeface=\"+mj-lt\"/></a:defRPr></a:lvl1pPr></p:titleStyle><p:bodyStyle>"
               "<a:lvl1pPr marL=\"342900\" indent=\"-342900\"><a:buChar char=\"*\"/><a:defRPr "
               "sz=\"3200\"><a:latin typeface=\"+mn-lt\"/></a:defRPr></a:lvl1pPr><a:lvl2pPr "
               "marL=\"742950\" indent=\"-285750\"><a:buChar char=\"-\"/><a:defRPr sz=\"2800\">"
               "<a:latin typeface=\"+mn-lt\"/></a:defRPr></a:lvl2pPr></p:bodyStyle></p:txStyles>"
               "</p:sldMaster>";
    }

    ZipParts parts_;
    std::string list_;
    std::string deck_relations_;
    int slides_ = 0;
};

}  // namespace zorvane
