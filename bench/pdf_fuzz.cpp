// Any bytes as a PDF, by both roads.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "load/readers/pdf/pdf_reader.h"
#include "load/readers/sink/document_sink.h"

namespace {

class SilentMonitor : public zorvane::ReadMonitor {
  public:
    bool Progress(std::int64_t /*done*/, std::int64_t /*total*/) override { return true; }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    // The last byte chooses the options, so that a whole file can be a seed.
    const std::uint8_t choice = data[size - 1];
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    SilentMonitor monitor;
    std::string text;
    (void)zorvane::ReadPdfText(bytes, {}, {}, choice & 1, text, monitor).ok();
    zorvane::PdfRichOptions options;
    constexpr std::int32_t kMethods[] = {0, 1, 3, 3};
    options.lBCLConversionMethod = kMethods[choice >> 1 & 3];
    options.lBCLDocumentType = 1 + (choice >> 3) % 3;
    options.bBCLExtractHyperlinks = true;
    options.bRemoveHiddenText = (choice & 32) != 0;
    options.bBCLDetectHeader = (choice & 64) != 0;
    const auto sink = zorvane::MakeRtfSink();
    (void)zorvane::ReadPdfRich(bytes, {}, {}, options, *sink, monitor).ok();
    return 0;
}
