// The office suite inside this process, by its public C interface for other programs
// (LibreOfficeKit.h, LibreOfficeKitInit.h and LibreOfficeKitEnums.h of the suite's development
// package describe it).
#include <cstddef>
#include <cstdlib>
#include <dlfcn.h>

#include "load/readers/office/office_files.h"

namespace zorvane {
namespace {

// The tables of functions as the suite lays them out. Each begins with its own size in bytes, by
// which a member of a later version is told to be there. Only the members up to the last one that
// is called here are declared; the order is the interface.
struct Kit;
struct KitDocument;
using KitCallback = void (*)(int kind, const char* payload, void* data);

struct KitFunctions {
    std::size_t size;
    void (*destroy)(Kit*);
    KitDocument* (*document_load)(Kit*, const char* url);
    char* (*get_error)(Kit*);
    KitDocument* (*document_load_with_options)(Kit*, const char* url, const char* options);
    void (*free_error)(char*);
    void (*register_callback)(Kit*, KitCallback, void* data);
    char* (*get_filter_types)(Kit*);
    void (*set_optional_features)(Kit*, unsigned long long features);
    void (*set_document_password)(Kit*, const char* url, const char* password);
};
struct Kit {
    KitFunctions* functions;
};

struct KitDocumentFunctions {
    std::size_t size;
    void (*destroy)(KitDocument*);
    int (*save_as)(KitDocument*, const char* url, const char* format, const char* filter_options);
    int (*get_document_type)(KitDocument*);
};
struct KitDocument {
    KitDocumentFunctions* functions;
};

using KitHook = Kit* (*)(const char* program_folder, const char* profile_url);

constexpr unsigned long long kAsksForPasswords = 1;  // LOK_FEATURE_DOCUMENT_PASSWORD
constexpr int kPasswordWanted = 20;                  // LOK_CALLBACK_DOCUMENT_PASSWORD

// Asks nothing: a dialog (about a text's encoding, say) would wait for its user for good.
constexpr const char* kLoadOptions = "Batch=true";

struct DocumentCloser {
    void operator()(KitDocument* document) const { document->functions->destroy(document); }
};
using OpenDocument = std::unique_ptr<KitDocument, DocumentCloser>;

/// Null when the library does not load here, such as one of another packaging system.
KitHook LoadHook(const std::string& program_folder) {
    for (const char* name : {"/libsofficeapp.so", "/libmergedlo.so"}) {
        // Never closed: its threads and its handlers at exit would run into nothing.
        void* library = dlopen((program_folder + name).c_str(), RTLD_LAZY | RTLD_LOCAL);
        if (library == nullptr)
            continue;
        if (void* hook = dlsym(library, "libreofficekit_hook_2"))
            return reinterpret_cast<KitHook>(hook);
    }
    return nullptr;
}

class OfficeLibrary : public OfficeSession {
  public:
    OfficeLibrary(const OfficePlace& place, const std::string& profile_folder,
                  std::chrono::milliseconds child_time_limit)
        : place_(place),
          folder_(profile_folder),
          other_road_(MakeOfficeProgram(place, profile_folder, child_time_limit)) {}
    ~OfficeLibrary() override {
        if (kit_ != nullptr)
            kit_->functions->destroy(kit_);
    }
    OfficeLibrary(const OfficeLibrary&) = delete;
    OfficeLibrary& operator=(const OfficeLibrary&) = delete;

    ReadEnd Convert(const OfficeTask& task) override;

  private:
    bool Start();
    OpenDocument Load(const std::string& url, const std::string& password);
    void AnswerPassword();
    ReadEnd Save(KitDocument& document, const OfficeFormat& format);
    static void OnCallback(int kind, const char* payload, void* session);

    OfficePlace place_;
    OfficeFolder folder_;
    std::unique_ptr<OfficeSession> other_road_;
    Kit* kit_ = nullptr;
    bool does_not_start_ = false;

    // Of the document that is being loaded.
    std::string url_;
    std::string password_;
    int questions_ = 0;
};

bool OfficeLibrary::Start() {
    if (kit_ != nullptr || does_not_start_)
        return kit_ != nullptr;
    does_not_start_ = true;
    const KitHook hook = LoadHook(place_.program_folder);
    if (hook == nullptr || !folder_.Prepare())
        return false;
    // Before the suite's threads exist: draw into memory; names of files are UTF-8 and texts do not
    // depend on the user's language; temporary files go with the session.
    setenv("SAL_USE_VCLPLUGIN", "svp", 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    setenv("TMPDIR", folder_.Temporary().c_str(), 1);
    Kit* kit = hook(place_.program_folder.c_str(), folder_.ProfileUrl().c_str());
    if (kit == nullptr)
        return false;
    if (kit->functions->size > offsetof(KitFunctions, set_document_password)) {
        kit->functions->set_optional_features(kit, kAsksForPasswords);
        kit->functions->register_callback(kit, &OfficeLibrary::OnCallback, this);
    }
    kit_ = kit;
    return true;
}

void OfficeLibrary::OnCallback(int kind, const char* /*payload*/, void* session) {
    if (kind == kPasswordWanted)
        static_cast<OfficeLibrary*>(session)->AnswerPassword();
}

/// The suite waits for the answer, and asks again after a wrong one: then it gets none, which ends
/// the loading. The question names the document by its URL or by its title, the answer must name
/// it by the URL that it was opened by.
void OfficeLibrary::AnswerPassword() {
    const bool told_before = questions_++ > 0;
    const char* answer = told_before || password_.empty() ? nullptr : password_.c_str();
    kit_->functions->set_document_password(kit_, url_.c_str(), answer);
}

OpenDocument OfficeLibrary::Load(const std::string& url, const std::string& password) {
    url_ = url;
    password_ = password;
    questions_ = 0;
    return OpenDocument(
        kit_->functions->document_load_with_options(kit_, url_.c_str(), kLoadOptions));
}

ReadEnd OfficeLibrary::Save(KitDocument& document, const OfficeFormat& format) {
    if (document.functions->size > offsetof(KitDocumentFunctions, get_document_type)) {
        const int kind = document.functions->get_document_type(&document);
        if (kind != static_cast<int>(format.kind)) {
            return ReadEnd::Fault(ReadError::WrongFormat,
                                  "The office suite reads it as another kind of document.");
        }
    }
    const std::string name(format.name);
    const std::string url = FileUrl(folder_.ResultFolder() + "/result." + name);
    if (document.functions->save_as(&document, url.c_str(), name.c_str(), nullptr) == 0)
        return ReadEnd::Fault(ReadError::CannotWrite, "The office suite could not write it.");
    return ReadEnd::Ok();
}

ReadEnd OfficeLibrary::Convert(const OfficeTask& task) {
    const OfficeFormat* wanted = FindOfficeFormat(task.format);
    if (wanted == nullptr || !HasPartFor(place_, wanted->kind) || !Start())
        return other_road_->Convert(task);
    std::string path;
    if (ReadEnd end = folder_.Offer(task, path); !end.ok())
        return end;
    {
        const OpenDocument document = Load(FileUrl(path), task.password);
        if (!document && questions_ > 0)
            return ReadEnd::Fault(ReadError::PasswordNeeded);
        if (!document)
            return ReadEnd::Fault(ReadError::Damaged, "The office suite could not read it.");
        if (ReadEnd end = Save(*document, *wanted); !end.ok())
            return end;
    }
    return folder_.Deliver(task);
}

}  // namespace

std::unique_ptr<OfficeSession> MakeOfficeLibrary(const OfficePlace& place,
                                                 const std::string& profile_folder,
                                                 std::chrono::milliseconds child_time_limit) {
    return std::make_unique<OfficeLibrary>(place, profile_folder, child_time_limit);
}

}  // namespace zorvane
