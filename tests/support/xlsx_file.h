// Small XLSX workbooks made in memory.
#pragma once

#include <string>
#include <string_view>

#include "tests/support/zip_file.h"

namespace zorvane {

struct XlsxParts {
    std::string rows;        ///< inside of sheetData
    std::string behind;      ///< behind sheetData: merged cells
    std::string texts;       ///< inside of sst
    std::string formats;     ///< inside of numFmts
    std::string styles;      ///< inside of cellXfs
    std::string properties;  ///< attributes of workbookPr
};

inline std::string MakeXlsx(const XlsxParts& parts) {
    const std::string workbook =
        "<workbook><workbookPr " + parts.properties +
        "/><sheets><sheet name=\"One &amp; only\" sheetId=\"1\" r:id=\"rId1\"/>"
        "<sheet name=\"Secret\" state=\"veryHidden\" sheetId=\"2\" r:id=\"rId2\"/>"
        "<sheet name=\"Chart\" sheetId=\"3\" r:id=\"rId5\"/></sheets></workbook>";
    const std::string sheet = "<?xml version=\"1.0\"?><worksheet><sheetData>" + parts.rows +
                              "</sheetData>" + parts.behind + "</worksheet>";
    const std::string styles = "<styleSheet><numFmts>" + parts.formats +
                               "</numFmts><cellStyleXfs><xf numFmtId=\"9\"/></cellStyleXfs>"
                               "<cellXfs>" +
                               parts.styles + "</cellXfs></styleSheet>";
    const std::string texts = "<sst>" + parts.texts + "</sst>";
    constexpr std::string_view kRelationships =
        "<Relationships><Relationship Id=\"rId1\" Type=\"x/worksheet\" Target=\"sheets/a.xml\"/>"
        "<Relationship Id=\"rId2\" Type=\"x/worksheet\" Target=\"/xl/sheets/b.xml\"/>"
        "<Relationship Id=\"rId3\" Type=\"x/styles\" Target=\"styles.xml\"/>"
        "<Relationship Id=\"rId4\" Type=\"x/sharedStrings\" Target=\"texts.xml\"/>"
        "<Relationship Id=\"rId5\" Type=\"x/chartsheet\" Target=\"c.xml\"/></Relationships>";
    return MakeZip({
        {"[Content_Types].xml", "<Types/>"},
        {"_rels/.rels",
         "<Relationships><Relationship Id=\"r\" Type=\"x/officeDocument\" "
         "Target=\"xl/book.xml\"/></Relationships>"},
        {"xl/book.xml", workbook},
        {"xl/_rels/book.xml.rels", kRelationships},
        {"xl/sheets/a.xml", sheet},
        {"xl/sheets/b.xml",
         "<worksheet><sheetData><row><c><v>2</v></c></row></sheetData></worksheet>"},
        {"xl/styles.xml", styles},
        {"xl/texts.xml", texts},
    });
}

}  // namespace zorvane
