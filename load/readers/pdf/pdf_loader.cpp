// The PDF readers of zorvane-convert: each call goes to the module, which lies beside the program
// or in ../lib/zorvane.
#include <dlfcn.h>
#include <filesystem>
#include <string>

#include "load/readers/pdf/pdf_module.h"

namespace zorvane {
namespace {

// Readers that are a library of their own are not bound by -Bsymbolic; their names would be found
// in the program first.
#ifdef ZORVANE_SHARED
constexpr int kOwnNamesFirst = RTLD_DEEPBIND;
#else
constexpr int kOwnNamesFirst = 0;
#endif

void* OpenModule(std::string& fault) {
    std::error_code error;
    const std::filesystem::path folder =
        std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const std::filesystem::path& place :
         {folder / kPdfModuleFile, folder / "../lib/zorvane" / kPdfModuleFile}) {
        // Never closed: the readers live as long as the process.
        if (void* module = dlopen(place.c_str(), RTLD_NOW | RTLD_LOCAL | kOwnNamesFirst))
            return module;
        const char* reason = dlerror();
        if (fault.empty())
            fault = reason == nullptr ? "it cannot be loaded" : reason;
    }
    return nullptr;
}

// Loaded once, before anything of a document is looked into.
struct LoadedModule {
    const PdfModule* module = nullptr;
    ReadEnd fault = ReadEnd::Fault(ReadError::Unsupported, "a PDF inside another document");
};
LoadedModule& Loaded() {
    static LoadedModule loaded;
    return loaded;
}

template <class Call>
ReadEnd WithModule(Call&& call) {
    const LoadedModule& loaded = Loaded();
    return loaded.module == nullptr ? loaded.fault : call(*loaded.module);
}

}  // namespace

ReadEnd PreparePdf(OpenTables& tables) {
    std::string fault;
    void* module = OpenModule(fault);
    void* entry = module == nullptr ? nullptr : dlsym(module, kPdfModuleEntry);
    if (entry == nullptr) {
        Loaded().fault = ReadEnd::Fault(ReadError::NotStarted, fault);
        return Loaded().fault;
    }
    Loaded().module = reinterpret_cast<PdfModuleEntry>(entry)();
    return Loaded().module->prepare(tables);
}

ReadEnd CountPdfPages(std::string_view bytes, const PdfPasswords& passwords, std::int32_t& pages) {
    return WithModule(
        [&](const PdfModule& module) { return module.count_pages(bytes, passwords, pages); });
}

ReadEnd ReadPdfText(std::string_view bytes, const PdfPasswords& passwords, const PdfPages& pages,
                    double max_delta_x, std::string& text, ReadMonitor& monitor) {
    return WithModule([&](const PdfModule& module) {
        return module.read_text(bytes, passwords, pages, max_delta_x, text, monitor);
    });
}

ReadEnd ReadPdfBeside(std::string_view bytes, const PdfPasswords& passwords, const PdfPages& pages,
                      std::string_view text, DocumentSink& sink) {
    return WithModule([&](const PdfModule& module) {
        return module.read_beside(bytes, passwords, pages, text, sink);
    });
}

ReadEnd ReadPdfRich(std::string_view bytes, const PdfPasswords& passwords, const PdfPages& pages,
                    const PdfRichOptions& options, DocumentSink& sink, ReadMonitor& monitor) {
    return WithModule([&](const PdfModule& module) {
        return module.read_rich(bytes, passwords, pages, options, sink, monitor);
    });
}

}  // namespace zorvane
