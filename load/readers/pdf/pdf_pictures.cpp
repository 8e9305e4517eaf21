// Source: ISO 32000-1, 8.8 to 8.10 (external objects, images, forms).
#include "load/readers/pdf/pdf_pictures.h"

#include <Page.h>
#include <Stream.h>
#include <algorithm>
#include <array>
#include <limits>
#include <string_view>
#include <utility>

#include "load/readers/pdf/pdf_content.h"
#include "load/readers/pdf/pdf_document.h"

namespace zorvane {
namespace {

constexpr int kDeepestForm = 16;
constexpr int kDeepestValue = 4;
constexpr std::int64_t kMostPictureBytes = std::int64_t{64} << 20;

constexpr std::size_t kMostContent = std::size_t{64} << 20;  // unpacked, of a page or form

std::clock_t Clocks(double seconds) {
    return static_cast<std::clock_t>(seconds * CLOCKS_PER_SEC);
}

void Add(const PdfPicture& picture, std::vector<PdfPicture>& drawn) {
    const auto known = std::find_if(drawn.begin(), drawn.end(), [&](const PdfPicture& other) {
        return other.digest == picture.digest;
    });
    if (known == drawn.end()) {
        drawn.push_back(picture);
        return;
    }
    const std::int32_t room = std::numeric_limits<std::int32_t>::max() - known->times;
    known->times += std::min(room, picture.times);
}

std::string SizeOf(Dict& facts) {
    const auto number = [&facts](const char* key) {
        const Object value = facts.lookup(key);
        return value.isInt() ? std::to_string(value.getInt()) : std::string("?");
    };
    return number("Width") + " x " + number("Height");
}

PdfPicture InlinePicture(const PdfDrawing& drawing) {
    const auto shown = [](std::string_view number) {
        return number.empty() ? std::string("?") : std::string(number);
    };
    return {BesideDigest(drawing.bytes), shown(drawing.width) + " x " + shown(drawing.height)};
}

}  // namespace

PdfPictures::PdfPictures(PDFDoc& document)
    : xref_(document.getXRef()),
      left_(Clocks(kDocumentSeconds +
                   kDocumentSecondsPerMegabyte * 1e-6 *
                       static_cast<double>(document.getBaseStream()->getLength()))) {}

std::vector<PdfPicture> PdfPictures::Of(Page& page) {
    in_part_ = time_is_over_ = false;
    const std::clock_t start = std::clock();
    page_end_ = start + std::min(left_, Clocks(kMaxPageSeconds));
    Object contents = page.getContents();
    Drawn drawn = Scan(contents, page.getResourceDict(), 0);
    left_ -= std::min(left_, std::clock() - start);
    return drawn;
}

bool PdfPictures::TimeIsOver() {
    if (!time_is_over_ && std::clock() > page_end_)
        in_part_ = time_is_over_ = true;
    return time_is_over_;
}

void PdfPictures::AddUnpacked(Object& stream, std::string& text) {
    constexpr std::size_t kPiece = std::size_t{64} << 10;
    std::vector<unsigned char> piece(kPiece);
    Stream* const bytes = stream.getStream();
    bytes->reset();
    while (text.size() < kMostContent && !TimeIsOver()) {
        const int got = bytes->doGetChars(static_cast<int>(kPiece), piece.data());
        if (got <= 0)
            break;
        text.append(piece.begin(), piece.begin() + got);
    }
    bytes->close();
    text += '\n';  // a word ends with its stream
    in_part_ = in_part_ || text.size() > kMostContent;
}

std::string PdfPictures::Unpacked(Object& contents) {
    std::string text;
    if (contents.isStream()) {
        AddUnpacked(contents, text);
    } else if (contents.isArray()) {
        for (int index = 0; index < contents.arrayGetLength() && !TimeIsOver(); ++index) {
            Object part = contents.arrayGet(index);
            if (part.isStream())
                AddUnpacked(part, text);
        }
    }
    return text;
}

PdfPictures::Drawn PdfPictures::Scan(Object& contents, Dict* resources, int depth) {
    constexpr std::uint32_t kSteps = 256;  // a look at the clock has its price
    const std::string text = Unpacked(contents);
    PdfContent content(text);
    PdfDrawing drawing;
    Drawn drawn;
    for (std::uint32_t step = 1; content.Next(drawing) && !time_is_over_; ++step) {
        if (drawing.name.empty())
            Add(InlinePicture(drawing), drawn);
        else
            Draw(drawing.name.c_str(), resources, depth, drawn);
        if (step % kSteps == 0)
            TimeIsOver();
    }
    return drawn;
}

void PdfPictures::Draw(const char* name, Dict* resources, int depth, Drawn& drawn) {
    const Object objects = resources == nullptr ? Object(objNull) : resources->lookup("XObject");
    if (!objects.isDict())
        return;
    const Object& reference = objects.getDict()->lookupNF(name);
    if (!reference.isRef())
        return;
    const int number = reference.getRef().num;
    if (const auto known = pictures_.find(number); known != pictures_.end())
        return Add(known->second, drawn);
    Object object = reference.fetch(xref_);
    if (!object.isStream())
        return;
    const Object subtype = object.streamGetDict()->lookup("Subtype");
    if (subtype.isName("Image")) {
        Add(Picture(object, number), drawn);
    } else if (subtype.isName("Form")) {
        for (const PdfPicture& picture : Form(object, number, resources, depth))
            Add(picture, drawn);
    }
}

const PdfPicture& PdfPictures::Picture(Object& stream, int number) {
    Dict& facts = *stream.streamGetDict();
    BesideHash hash;
    hash.Add(DigestOf(stream));
    for (const char* key : {"Width", "Height", "BitsPerComponent", "ColorSpace", "Decode",
                            "ImageMask", "Mask", "SMask"})
        AddValue(facts.lookup(key), 0, hash);
    return pictures_[number] = {hash.Digest(), SizeOf(facts)};
}

PdfPictures::Drawn PdfPictures::Form(Object& stream, int number, Dict* resources, int depth) {
    if (const auto known = forms_.find(number); known != forms_.end())
        return known->second;
    if (depth >= kDeepestForm) {
        in_part_ = true;
        return {};
    }
    const Object own = stream.streamGetDict()->lookup("Resources");
    if (!own.isDict())
        return Scan(stream, resources, depth + 1);
    forms_[number];  // one that draws itself ends here
    Drawn drawn = Scan(stream, own.getDict(), depth + 1);
    if (in_part_)
        forms_.erase(number);  // the next page that draws it is in part too
    else
        forms_[number] = drawn;
    return drawn;
}

void PdfPictures::AddValue(const Object& value, int depth, BesideHash& hash) {
    hash.Add(";");
    if (value.isStream()) {
        Object stream = value.copy();
        hash.Add(DigestOf(stream));
    } else if (value.isArray() && depth < kDeepestValue) {
        for (int index = 0; index < value.arrayGetLength(); ++index)
            AddValue(value.arrayGet(index), depth + 1, hash);
    } else if (value.isName()) {
        hash.Add(value.getName());
    } else if (value.isString()) {
        hash.Add(value.getString()->toStr());
    } else if (value.isNum()) {
        hash.Add(std::to_string(value.getNum()));
    } else if (value.isBool()) {
        hash.Add(value.getBool() ? "true" : "false");
    }
}

std::string PdfPictures::DigestOf(Object& stream) {
    Stream* const bytes = stream.getStream()->getUndecodedStream();
    BesideHash hash;
    std::array<unsigned char, 4096> buffer{};
    bytes->reset();
    std::int64_t left = std::min(bytes_left_, kMostPictureBytes);
    while (left > 0) {
        const int got = bytes->doGetChars(static_cast<int>(buffer.size()), buffer.data());
        if (got <= 0)
            break;
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
        hash.Add({reinterpret_cast<const char*>(buffer.data()), static_cast<std::size_t>(got)});
        left -= got;
        bytes_left_ -= got;
    }
    bytes->close();
    in_part_ = in_part_ || left <= 0;
    return hash.Digest();
}

}  // namespace zorvane
