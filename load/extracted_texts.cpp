#include "load/extracted_texts.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

#include "common/base/text_encoding.h"
#include "common/platform/files.h"
#include "common/process_state.h"
#include "load/conversion_service.h"
#include "load/file_types.h"
#include "load/password_wanted.h"
#include "load/reader_stamps.h"
#include "load/silent_load.h"

namespace zorvane {
namespace {

// To be raised whenever another text is made of what the readers give.
constexpr const char* kReading = "2 plain quick-pdf slide-numbers all-sheets notes";

constexpr std::int32_t kHomeFolder = 40;

// How long a wish to stop may go unheard by one who waits.
constexpr std::chrono::milliseconds kAskAgain{20};

class StopWatcher : public RunWatcher {
  public:
    explicit StopWatcher(const ExtractedTexts::Stop& stop) : stop_(stop) {}
    bool KeepGoing() override { return !stop_(); }

  private:
    const ExtractedTexts::Stop& stop_;
};

PlaceMarks MarksOf(LoadRoad road) {
    switch (road) {
        case LoadRoad::Pdf:
            return PlaceMarks::FormFeeds;
        case LoadRoad::Slides:
            return PlaceMarks::SlideNumbers;
        case LoadRoad::Sheets:
            return PlaceMarks::SheetNames;
        default:
            return PlaceMarks::None;
    }
}

}  // namespace

TextCache UserTextCache(ProcessState& process) {
    return TextCache(UserTextCacheFolder(process.platform.folders->GetSpecialFolder(kHomeFolder)));
}

bool IsReadAsDocument(std::string_view name) {
    const FileType* type = TypeNamed(name);
    if (type == nullptr || type->title.empty())
        return false;
    switch (type->road) {
        case LoadRoad::Pdf:
        case LoadRoad::Slides:
            return type->when != RoadWhen::BytesAreText;
        case LoadRoad::Sheets:
            return type->kind == FileKind::Spreadsheet;
        case LoadRoad::Word:
            return type->form != TextForm::Xml && type->form != TextForm::Markdown;
        default:
            return false;
    }
}

/// Marks a content as being read, once nobody else reads it.
class ExtractedTexts::InWork {
  public:
    InWork(ExtractedTexts& texts, const TextKey& key, const Stop& stop) : texts_(texts), key_(key) {
        std::unique_lock lock(texts.guard_);
        while (!texts.in_work_.insert(key).second) {
            if (stop())
                return;
            texts.changed_.wait_for(lock, kAskAgain);
        }
        mine_ = true;
    }
    ~InWork() {
        if (!mine_)
            return;
        const std::lock_guard lock(texts_.guard_);
        texts_.in_work_.erase(key_);
        texts_.changed_.notify_all();
    }
    InWork(const InWork&) = delete;
    InWork& operator=(const InWork&) = delete;

  private:
    ExtractedTexts& texts_;
    TextKey key_;
    bool mine_ = false;
};

ExtractedTexts::ExtractedTexts(ProcessState& process, TextCache cache)
    : process_(process),
      cache_(std::move(cache)),
      reading_(std::string(kReading) + "\n" +
               ReaderStamps(process.platform.folders->ProgramFolder())),
      free_slots_(std::max(1, static_cast<int>(std::thread::hardware_concurrency()))) {}

ExtractedTexts::~ExtractedTexts() {
    if (wrote_)
        cache_.Trim();
}

Result<TextKey> ExtractedTexts::KeyOfFile(const std::string& path) const {
    const Result<std::string> bytes = ReadWholeFile(path);
    if (!bytes.ok())
        return bytes.failure();
    return KeyOf(bytes.value(), reading_ + UpperExtension(path));
}

ExtractedText ExtractedTexts::TextOf(const std::string& path, const Stop& stop) {
    const Result<TextKey> read = KeyOfFile(path);
    if (!read.ok())
        return {nullptr, read.failure().reason};
    const TextKey key = read.value();
    const InWork work(*this, key, stop);
    if (stop())
        return {nullptr, "stopped"};
    if (std::optional<DocumentText> known = cache_.Find(key)) {
        ++hits_;
        return {std::make_shared<DocumentText>(std::move(*known)), ""};
    }
    ExtractedText text = Extract(path, "", stop);
    if (!text.document) {
        for (std::size_t at = 0; at < passwords_.size() && !text.document && !stop(); ++at)
            text = Extract(path, passwords_[at], stop);
        return text;
    }
    // What was written to the file meanwhile may be what was read.
    if (stop() || cache_.Folder().empty())
        return text;
    if (const Result<TextKey> after = KeyOfFile(path); after.ok() && after.value() == key) {
        cache_.Keep(key, *text.document);
        wrote_ = true;
    }
    return text;
}

ExtractedText ExtractedTexts::Extract(const std::string& path, const std::string& password,
                                      const Stop& stop) {
    const FileType* type = TypeNamed(path);
    const bool office = type != nullptr && type->needs_office;
    std::unique_ptr<ConversionService> service = TakeService(office, stop);
    if (!service)
        return {nullptr, "stopped"};
    StopWatcher watcher(stop);
    SilentLoad load(process_, SilentLoad::Formats::Dropped);
    if (!password.empty())
        load.UsePassword(password);
    ExtractedText text;
    if (load.Load(path, *service, watcher))
        text.document = std::make_shared<DocumentText>(
            WithPlaces(PlainLines(load.Editor().Text()), MarksOf(load.Type(path).road)));
    else
        text.reason = load.Reason();
    text.wants_password = WantsPassword({text.reason}, process_.Translate(kPasswordWanted));
    text.reason = WithoutAdvice(std::move(text.reason));
    service->ForgetFailures();
    static_cast<void>(service->TakeBeside());  // a search looks at the text alone
    GiveBack(std::move(service), office);
    return text;
}

std::unique_ptr<ConversionService> ExtractedTexts::TakeService(bool office, const Stop& stop) {
    std::unique_lock lock(guard_);
    while (free_slots_ == 0 || (office && !office_free_)) {
        if (stop())
            return nullptr;
        changed_.wait_for(lock, kAskAgain);
    }
    --free_slots_;
    office_free_ = office_free_ && !office;
    if (services_.empty())
        return std::make_unique<ConversionService>(process_);
    std::unique_ptr<ConversionService> service = std::move(services_.back());
    services_.pop_back();
    return service;
}

void ExtractedTexts::GiveBack(std::unique_ptr<ConversionService> service, bool office) {
    const std::lock_guard lock(guard_);
    services_.push_back(std::move(service));
    ++free_slots_;
    office_free_ = office_free_ || office;
    changed_.notify_all();
}

}  // namespace zorvane
