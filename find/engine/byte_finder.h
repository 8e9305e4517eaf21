// Finds a run of bytes in a text, as fast as the memory gives it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zorvane {

enum class LetterCase { Matters, AsciiFolds };

/// Looks for the two bytes of the needle that are rarest in texts, 32 places at a time where the
/// processor has AVX2, and compares the whole where both stand. Safe for several threads.
class ByteFinder {
  public:
    /// `needle` is not empty.
    explicit ByteFinder(std::string_view needle, LetterCase letter_case = LetterCase::Matters);
    /// The first place at or behind `begin` whose needle ends at or before `end`; nullptr for none.
    const char* Find(const char* begin, const char* end) const;
    /// The same without the processor's wide registers.
    const char* FindPlainly(const char* begin, const char* end) const;
    std::size_t size() const { return needle_.size(); }

  private:
    bool Stands(const char* at) const;
    const char* FindWide(const char* begin, const char* end) const;

    std::string needle_;  // in lower case where case folds
    bool folds_;
    bool wide_;
    struct Rare {
        std::size_t offset = 0;
        char lower = 0;
        char upper = 0;
    };
    Rare first_;
    Rare second_;
};

/// How many line ends there are.
std::int64_t CountLineEnds(std::string_view text);
/// No byte above 127.
bool IsAsciiText(std::string_view text);

}  // namespace zorvane
