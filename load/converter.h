// The converters as the loader sees them: a file in, the bytes of a file that an editor can open
// out.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "common/base/result.h"

namespace zorvane {

/// What a word-processor conversion gives.
enum class WordFormat : std::int32_t { PlainText = 2, RichText = 6 };

/// Passwords of one side: to open, to write, and the same two of the template.
using WordPasswords = std::array<std::string, 4>;

/// Word-processor documents, and whatever else a word processor opens.
class WordConverter {
  public:
    virtual ~WordConverter() = default;
    virtual double WordVersion() const = 0;
    /// Plain text comes in UTF-8, and a file that is plain text comes so in either format. Fails
    /// with the file and the reason in a user's words.
    virtual Result<std::string> Convert(const std::string& sFile, WordFormat format,
                                        const WordPasswords& passwords) = 0;
};

/// Reads RTF and text, told by the bytes, whatever the name says. Any other format is a failure
/// that says what to do.
class NativeWordConverter : public WordConverter {
  public:
    explicit NativeWordConverter(std::string locale_encoding)
        : locale_encoding_(std::move(locale_encoding)) {}
    double WordVersion() const override { return 16.0; }
    Result<std::string> Convert(const std::string& sFile, WordFormat format,
                                const WordPasswords& passwords) override;

  private:
    std::string locale_encoding_;
};

}  // namespace zorvane
