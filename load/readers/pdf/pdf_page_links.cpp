// The links of a page.
#include <Page.h>
#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "load/readers/pdf/pdf_characters.h"
#include "load/readers/pdf/pdf_graphics.h"

namespace zorvane {
namespace {

constexpr int kMaxLinks = 10'000;

}  // namespace

void PdfCharacterDevice::AddLinks(PDFDoc& document, int number) {
    ::Page* const page = document.getPage(number);
    if (page == nullptr)
        return;
    const Object annotations = page->getAnnotsObject();
    if (!annotations.isArray())
        return;
    for (int index = 0; index < std::min(annotations.arrayGetLength(), kMaxLinks); ++index)
        AddLink(annotations.arrayGet(index));
}

void PdfCharacterDevice::AddLink(const Object& annotation) {
    if (!annotation.isDict() || !annotation.dictLookup("Subtype").isName("Link"))
        return;
    const Object action = annotation.dictLookup("A");
    const Object place = annotation.dictLookup("Rect");
    if (!action.isDict() || !place.isArray() || place.arrayGetLength() != 4)
        return;
    const Object address = action.dictLookup("URI");
    if (!address.isString())
        return;
    PdfLink link;
    link.address = address.getString()->toStr();
    // An address is ASCII; anything else is none, or was not decrypted.
    const bool printable = std::all_of(link.address.begin(), link.address.end(),
                                       [](char letter) { return letter > ' ' && letter < 0x7F; });
    if (link.address.empty() || !printable)
        return;
    std::array<double, 4> corners{};
    for (int index = 0; index < 4; ++index)
        corners[static_cast<std::size_t>(index)] = place.arrayGet(index).getNumWithDefaultValue(0);
    const double* matrix = getDefCTM();
    const auto x = [&](std::size_t corner) {
        return matrix[0] * corners[corner] + matrix[2] * corners[corner + 1] + matrix[4];
    };
    const auto y = [&](std::size_t corner) {
        return matrix[1] * corners[corner] + matrix[3] * corners[corner + 1] + matrix[5];
    };
    link.box = BoxOf(x(0), y(0), x(2), y(2));
    page_.links.push_back(std::move(link));
}

}  // namespace zorvane
