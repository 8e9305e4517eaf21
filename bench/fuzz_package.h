// A package from the bytes of a fuzzer, so that it need not write ZIP files: parts are apart by
// 0xFF, and each begins with its name and a line end.
#pragma once

#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "load/readers/container/package.h"

namespace zorvane {

class FuzzPackage : public Package {
  public:
    explicit FuzzPackage(std::string_view bytes) {
        while (!bytes.empty()) {
            const std::string_view part = bytes.substr(0, bytes.find('\xFF'));
            bytes.remove_prefix(std::min(part.size() + 1, bytes.size()));
            const std::size_t line = part.find('\n');
            if (line != std::string_view::npos)
                parts_.emplace(part.substr(0, line), part.substr(line + 1));
        }
    }
    bool Has(std::string_view name) const override { return parts_.contains(std::string(name)); }
    std::vector<std::string> Names() const override {
        std::vector<std::string> names;
        for (const auto& [name, content] : parts_)
            names.push_back(name);
        return names;
    }
    std::optional<std::string> Read(std::string_view name, ReadError* error) override {
        const auto part = parts_.find(std::string(name));
        if (part != parts_.end())
            return part->second;
        if (error != nullptr)
            *error = ReadError::WrongFormat;
        return std::nullopt;
    }
    std::unique_ptr<PartStream> Stream(std::string_view name) override {
        const auto part = parts_.find(std::string(name));
        return part == parts_.end() ? nullptr : std::make_unique<Bytes>(part->second);
    }
    std::string ToldChecksum(std::string_view) const override { return {}; }
    bool Encrypted() const override { return false; }

  private:
    class Bytes : public PartStream {
      public:
        explicit Bytes(std::string_view bytes) : left_(bytes) {}
        std::size_t Read(char* buffer, std::size_t size) override {
            const std::size_t got = std::min(size, left_.size());
            std::memcpy(buffer, left_.data(), got);
            left_.remove_prefix(got);
            return got;
        }
        ReadError Error() const override { return ReadError::None; }

      private:
        std::string_view left_;
    };

    std::map<std::string, std::string> parts_;
};

}  // namespace zorvane
