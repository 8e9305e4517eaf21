// Any parts as a deck, of either format: reading ends, paragraphs do not nest, and the text is
// UTF-8 without line ends.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "bench/fuzz_package.h"
#include "common/base/text_encoding.h"
#include "load/readers/slide_reader.h"

namespace {

using namespace zorvane;

void Demand(bool held) {
    if (!held)
        std::abort();
}

class StrictSink : public DocumentSink {
  public:
    void BeginParagraph(const ParagraphFormat& /*format*/) override {
        Demand(!open_);
        open_ = true;
    }
    void Text(std::string_view utf8, const CharFormat& format) override {
        Demand(open_ && IsValidUtf8(utf8) && utf8.find_first_of("\r\n") == std::string_view::npos);
        Demand(format.half_points >= 1 && format.half_points <= 3276);
        size_ += utf8.size();
    }
    void ListLabel(std::string_view utf8, const CharFormat& format) override { Text(utf8, format); }
    void EndParagraph() override {
        Demand(open_);
        open_ = false;
        size_ += 2;
    }
    std::size_t Size() const override { return size_; }
    std::string Finish() override {
        Demand(!open_);
        return {};
    }

  private:
    bool open_ = false;
    std::size_t size_ = 0;
};

class Patient : public ReadMonitor {
  public:
    bool Progress(std::int64_t done, std::int64_t total) override {
        Demand(done < total);
        return true;
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);  // NOLINT
    FuzzPackage package(bytes);
    SlideOptions options;
    options.show_numbers = (data[0] & 1) != 0;
    options.notes = (data[0] & 2) != 0;
    options.notes_only = (data[0] & 4) != 0;
    StrictSink sink;
    Patient monitor;
    const ReadEnd end = (data[0] & 8) != 0 ? ReadOpenDocumentSlides(package, options, sink, monitor)
                                           : ReadSlides(package, options, sink, monitor);
    if (end.ok())
        sink.Finish();
    return 0;
}
