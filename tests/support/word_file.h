// Small WordprocessingML packages for tests.
#pragma once

#include <string>
#include <string_view>

#include "tests/support/zip_file.h"

namespace zorvane {

struct WordFile {
    std::string body;         ///< of w:document/w:body
    std::string styles{};     ///< of w:styles
    std::string numbering{};  ///< of w:numbering
    std::string footnotes{};  ///< of w:footnotes
    std::string header{};     ///< of w:hdr, relationship "rh"
    std::string settings{};   ///< of w:settings
    std::string endnotes{};   ///< of w:endnotes
    std::string theme{};      ///< of a:theme
};

inline std::string WordPart(std::string_view root, std::string_view content) {
    return "<w:" + std::string(root) +
           " xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\" "
           "xmlns:mc=\"mc\" xmlns:wps=\"wps\" xmlns:m=\"m\">" +
           std::string(content) + "</w:" + std::string(root) + ">";
}

inline std::string MakeWordFile(const WordFile& file) {
    constexpr std::string_view kTypes =
        "<Types><Override PartName=\"/word/document.xml\" ContentType=\"application/"
        "vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml\"/></Types>";
    constexpr std::string_view kRoot =
        "<Relationships><Relationship Id=\"r1\" Type=\"http://x/officeDocument\" "
        "Target=\"word/document.xml\"/></Relationships>";
    constexpr std::string_view kParts =
        "<Relationships><Relationship Id=\"rs\" Type=\"http://x/styles\" Target=\"styles.xml\"/>"
        "<Relationship Id=\"rn\" Type=\"http://x/numbering\" Target=\"numbering.xml\"/>"
        "<Relationship Id=\"rf\" Type=\"http://x/footnotes\" Target=\"footnotes.xml\"/>"
        "<Relationship Id=\"rt\" Type=\"http://x/settings\" Target=\"settings.xml\"/>"
        "<Relationship Id=\"re\" Type=\"http://x/endnotes\" Target=\"endnotes.xml\"/>"
        "<Relationship Id=\"ra\" Type=\"http://x/theme\" Target=\"theme.xml\"/>"
        "<Relationship Id=\"rh\" Type=\"http://x/header\" Target=\"header1.xml\"/></Relationships>";
    return MakeZip(
        {{"[Content_Types].xml", kTypes},
         {"_rels/.rels", kRoot},
         {"word/_rels/document.xml.rels", kParts},
         {"word/document.xml", WordPart("document", "<w:body>" + file.body + "</w:body>")},
         {"word/styles.xml", WordPart("styles", file.styles)},
         {"word/numbering.xml", WordPart("numbering", file.numbering)},
         {"word/footnotes.xml", WordPart("footnotes", file.footnotes)},
         {"word/settings.xml", WordPart("settings", file.settings)},
         {"word/endnotes.xml", WordPart("endnotes", file.endnotes)},
         {"word/theme.xml", WordPart("theme", file.theme)},
         {"word/header1.xml", WordPart("hdr", file.header)}});
}

}  // namespace zorvane
