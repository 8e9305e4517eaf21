#include "load/readers/pdf/pdf_module.h"

extern "C" __attribute__((visibility("default"))) const zorvane::PdfModule* ZorvanePdfModule() {
    static constexpr zorvane::PdfModule kModule{&zorvane::PreparePdf, &zorvane::CountPdfPages,
                                                &zorvane::ReadPdfText, &zorvane::ReadPdfBeside,
                                                &zorvane::ReadPdfRich};
    return &kModule;
}
