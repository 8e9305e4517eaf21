#include <algorithm>
#include <array>

#include "load/readers/beside/package_beside.h"
#include "load/readers/opendocument/odt_body.h"
#include "load/readers/opendocument/open_package.h"
#include "load/readers/word_readers.h"

namespace zorvane {
namespace {

void AddNamed(const pugi::xml_node& root, OpenStyles& styles) {
    styles.AddFonts(Child(root, "font-face-decls"));
    styles.Add(Child(root, "styles"));
    styles.AddMasterPages(Child(root, "master-styles"));
}

void ShowMasterPage(const pugi::xml_node& page, OdtBody& body, OpenStyles& styles) {
    constexpr std::array<std::string_view, 6> kParts = {"header", "header-first", "header-left",
                                                        "footer", "footer-first", "footer-left"};
    for (const std::string_view name : kParts) {
        const pugi::xml_node part = Child(page, name);
        if (part && Attribute(part, "display") != "false")
            body.Blocks(part, styles);
    }
}

// The pages that follow by themselves, too: a first page with its successor.
void ShowHeadersAndFooters(OdtBody& body, OpenStyles& styles) {
    constexpr std::size_t kMostPages = 1000;
    std::vector<std::string> pages = body.MasterPages();
    if (body.StartsOnDefaultPage()) {
        const bool standard = !styles.MasterPage("Standard").empty();
        pages.insert(pages.begin(), std::string(standard ? "Standard" : styles.FirstMasterPage()));
    }
    for (std::size_t place = 0; place < pages.size() && place < kMostPages; ++place) {
        const auto same = [&](const std::string& name) { return name == pages[place]; };
        const auto at = pages.begin() + static_cast<std::ptrdiff_t>(place);
        if (std::any_of(pages.begin(), at, same))
            continue;
        const pugi::xml_node page = styles.MasterPage(pages[place]);
        ShowMasterPage(page, body, styles);
        const std::string_view next = Attribute(page, "next-style-name");
        if (!next.empty())
            pages.emplace_back(next);
    }
}

std::string DetailOf(ReadError error) {
    if (error == ReadError::Damaged)
        return "elements are nested too deeply";
    return error == ReadError::TooLarge ? "the document holds more text than allowed" : "";
}

}  // namespace

ReadEnd ReadOpenDocument(Package& package, DocumentSink& sink, ReadMonitor& monitor) {
    if (!package.Has("content.xml"))
        return ReadEnd::Fault(ReadError::WrongFormat, "no content.xml in the package");
    if (IsEncryptedOpenDocument(package))
        return ReadEnd::Fault(ReadError::PasswordNeeded, "the document is encrypted");
    XmlPart content;
    if (ReadEnd end = XmlPart::Read(package, "content.xml", content); !end.ok())
        return end;
    XmlPart named;
    if (package.Has("styles.xml")) {
        if (ReadEnd end = XmlPart::Read(package, "styles.xml", named); !end.ok())
            return end;
    }
    OpenStyles styles;
    OpenStyles page_styles;
    if (!named.Empty()) {
        AddNamed(named.Root(), styles);
        AddNamed(named.Root(), page_styles);
        page_styles.Add(Child(named.Root(), "automatic-styles"));
    }
    styles.AddFonts(Child(content.Root(), "font-face-decls"));
    styles.Add(Child(content.Root(), "automatic-styles"));

    ReportOpenDocumentProperties(package, sink);
    RowWriter writer(sink);
    OdtBody body(package, writer, monitor);
    body.Blocks(Child(content.Root(), "body"), styles);
    ShowHeadersAndFooters(body, page_styles);
    if (body.Error() != ReadError::None)
        return ReadEnd::Fault(body.Error(), DetailOf(body.Error()));
    ReportDamage(package, sink);
    return ReadEnd::Ok();
}

}  // namespace zorvane
