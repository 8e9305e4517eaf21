// The converters as the loader sees them: a file in, one temporary file out that an editor can
// open.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "common/base/result.h"

namespace zorvane {

/// What a word-processor conversion writes.
enum class WordFormat : std::int32_t { PlainText = 2, RichText = 6 };

/// Passwords of one side: to open, to write, and the same two of the template.
using WordPasswords = std::array<std::string, 4>;

/// Word-processor documents, and whatever else a word processor opens.
class WordConverter {
  public:
    virtual ~WordConverter() = default;
    virtual double WordVersion() const = 0;
    /// Fails with the reason in a user's words; `sTarget` may then be missing.
    virtual Status Convert(const std::string& sFile, const std::string& sTarget, WordFormat format,
                           const WordPasswords& passwords) = 0;
};

/// Reads RTF and text. Other formats are a failure that names the format and what to do.
class NativeWordConverter : public WordConverter {
  public:
    explicit NativeWordConverter(std::string locale_encoding)
        : locale_encoding_(std::move(locale_encoding)) {}
    double WordVersion() const override { return 16.0; }
    Status Convert(const std::string& sFile, const std::string& sTarget, WordFormat format,
                   const WordPasswords& passwords) override;

  private:
    std::string locale_encoding_;
};

}  // namespace zorvane
