#include "load/readers/container/package.h"

#include <algorithm>
#include <unordered_map>
#include <zip.h>

#include "common/base/ascii.h"
#include "load/file_signature.h"

namespace zorvane {
namespace {

// Some programs write the separator of their own system.
std::string WithSlashes(std::string_view name) {
    std::string path(name);
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::string Key(std::string_view name) {
    std::string key = WithSlashes(name);
    std::size_t begin = 0;
    while (key.compare(begin, 1, "/") == 0 || key.compare(begin, 2, "./") == 0)
        ++begin;
    key.erase(0, begin);
    std::transform(key.begin(), key.end(), key.begin(), AsciiLower);
    return key;
}

// What is left of the bound for all parts of one package.
struct Budget {
    std::size_t left;
};

class ZipStream : public PartStream {
  public:
    ZipStream(zip_file_t* file, Budget& budget) : file_(file), budget_(budget) {}
    ~ZipStream() override { zip_fclose(file_); }
    ZipStream(const ZipStream&) = delete;
    ZipStream& operator=(const ZipStream&) = delete;

    std::size_t Read(char* buffer, std::size_t size) override {
        if (Failed())
            return 0;
        const zip_int64_t read = zip_fread(file_, buffer, size);
        const auto got = static_cast<std::size_t>(std::max<zip_int64_t>(read, 0));
        if (read < 0)
            error_ = ReadError::Damaged;
        else if (got > budget_.left)
            error_ = ReadError::TooLarge;
        if (Failed())
            return 0;
        budget_.left -= got;
        return got;
    }
    ReadError Error() const override { return error_; }

  private:
    zip_file_t* file_;
    Budget& budget_;
    ReadError error_ = ReadError::None;
};

class ZipPackage : public Package {
  public:
    ZipPackage(zip_t* archive, std::size_t most_bytes) : archive_(archive), budget_{most_bytes} {
        const zip_int64_t count = zip_get_num_entries(archive_, 0);
        for (zip_int64_t i = 0; i < count; ++i) {
            const auto index = static_cast<zip_uint64_t>(i);
            if (const char* name = zip_get_name(archive_, index, 0)) {
                names_.push_back(WithSlashes(name));
                places_.try_emplace(Key(name), index);
            }
        }
    }
    ~ZipPackage() override { zip_discard(archive_); }
    ZipPackage(const ZipPackage&) = delete;
    ZipPackage& operator=(const ZipPackage&) = delete;

    bool Has(std::string_view name) const override { return places_.contains(Key(name)); }
    std::vector<std::string> Names() const override { return names_; }

    std::optional<std::string> Read(std::string_view name, ReadError* error) override {
        ReadError ignored = ReadError::None;
        ReadError& why = error == nullptr ? ignored : *error;
        const auto place = places_.find(Key(name));
        if (place == places_.end()) {
            why = ReadError::WrongFormat;
            return std::nullopt;
        }
        zip_file_t* file = zip_fopen_index(archive_, place->second, 0);
        std::optional<std::string> bytes;
        if (file == nullptr) {
            why = ReadError::Damaged;
        } else {
            ZipStream stream(file, budget_);
            bytes = ReadAll(stream, SizeHint(place->second), why);
        }
        if (!bytes && why == ReadError::Damaged)
            TellDamage(name);
        return bytes;
    }

    std::unique_ptr<PartStream> Stream(std::string_view name) override {
        const auto place = places_.find(Key(name));
        zip_file_t* file =
            place == places_.end() ? nullptr : zip_fopen_index(archive_, place->second, 0);
        return file == nullptr ? nullptr : std::make_unique<ZipStream>(file, budget_);
    }

    std::string ToldChecksum(std::string_view name) const override {
        const auto place = places_.find(Key(name));
        zip_stat_t facts;
        if (place == places_.end() || zip_stat_index(archive_, place->second, 0, &facts) != 0)
            return {};
        return std::to_string((facts.valid & ZIP_STAT_SIZE) != 0 ? facts.size : 0) + " " +
               std::to_string((facts.valid & ZIP_STAT_CRC) != 0 ? facts.crc : 0);
    }

    bool Encrypted() const override {
        zip_stat_t facts;
        for (const auto& [name, index] : places_) {
            if (zip_stat_index(archive_, index, 0, &facts) == 0 &&
                (facts.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 &&
                facts.encryption_method != ZIP_EM_NONE)
                return true;
        }
        return false;
    }

  private:
    // The size that the directory tells is a hint only: a hostile file can tell anything, though no
    // more than its packed bytes can become.
    std::size_t SizeHint(zip_uint64_t index) const {
        constexpr zip_uint64_t kMostDeflate = 1032;  // bytes that one packed byte can become
        constexpr zip_uint64_t kNeeded = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE;
        zip_stat_t facts;
        if (zip_stat_index(archive_, index, 0, &facts) != 0 || (facts.valid & kNeeded) != kNeeded)
            return 0;
        const zip_uint64_t can_be =
            std::min<zip_uint64_t>(facts.comp_size, kMaxPartBytes) * kMostDeflate;
        return std::min({facts.size, can_be, zip_uint64_t{kMaxPartBytes}});
    }

    // Room that is not reached costs no memory: no more of it is touched than a step ahead.
    static std::optional<std::string> ReadAll(ZipStream& stream, std::size_t hint, ReadError& why) {
        constexpr std::size_t kStep = std::size_t{1} << 16;
        std::string bytes;
        bytes.reserve(hint + kStep);  // the end is only seen by another step
        while (true) {
            const std::size_t old = bytes.size();
            bytes.resize(old + kStep);
            const std::size_t got = stream.Read(bytes.data() + old, kStep);
            bytes.resize(old + got);
            if (stream.Failed()) {
                why = stream.Error();
                return std::nullopt;
            }
            if (got == 0)
                return bytes;
            if (bytes.size() > kMaxPartBytes) {
                why = ReadError::TooLarge;
                return std::nullopt;
            }
        }
    }

    zip_t* archive_;
    Budget budget_;
    std::vector<std::string> names_;
    std::unordered_map<std::string, zip_uint64_t> places_;
};

// From folder to folder; no step leads out of the package.
void WalkSteps(std::string_view path, std::vector<std::string_view>& folders) {
    while (!path.empty()) {
        const std::size_t slash = std::min(path.find_first_of("/\\"), path.size());
        const std::string_view step = path.substr(0, slash);
        if (step == ".." && !folders.empty())
            folders.pop_back();
        else if (!step.empty() && step != "." && step != "..")
            folders.push_back(step);
        path.remove_prefix(std::min(slash + 1, path.size()));
    }
}

}  // namespace

std::unique_ptr<Package> Package::Open(std::string_view bytes, std::size_t most_bytes) {
    if (!HasSignature(bytes, Signature::Package))
        return nullptr;
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
    zip_t* archive = source == nullptr ? nullptr : zip_open_from_source(source, ZIP_RDONLY, &error);
    if (archive == nullptr && source != nullptr)
        zip_source_free(source);
    zip_error_fini(&error);
    return archive == nullptr ? nullptr : std::make_unique<ZipPackage>(archive, most_bytes);
}

std::string ResolvePart(std::string_view from_part, std::string_view reference) {
    std::vector<std::string_view> folders;
    const bool from_the_top = reference.starts_with('/') || reference.starts_with('\\');
    const std::size_t last = from_part.find_last_of("/\\");
    if (!from_the_top && last != std::string_view::npos)
        WalkSteps(from_part.substr(0, last), folders);
    WalkSteps(reference, folders);
    std::string part;
    for (const std::string_view folder : folders)
        part += (part.empty() ? "" : "/") + std::string(folder);
    return part;
}

}  // namespace zorvane
