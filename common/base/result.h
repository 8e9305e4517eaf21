// What a function that can fail gives back: a value or the reason, in words for a user.
#pragma once

#include <cassert>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace zorvane {

/// Why something failed. The one who finds the fault words it; each caller may put context in
/// front.
struct Failure {
    std::string reason;

    Failure WithContext(std::string_view context) const {
        return Failure{std::string(context) + ": " + reason};
    }
    friend bool operator==(const Failure&, const Failure&) = default;
};

/// Success, or a `Failure`.
class [[nodiscard]] Status {
  public:
    Status() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): a failure is returned as it stands
    Status(Failure failure) : failure_(std::move(failure)) {}

    static Status Ok() { return {}; }

    bool ok() const { return !failure_.has_value(); }
    /// Only when not ok().
    const Failure& failure() const {
        assert(failure_.has_value());
        return *failure_;
    }

  private:
    std::optional<Failure> failure_;
};

/// A value of type T, or a `Failure`.
template <class T>
class [[nodiscard]] Result {
  public:
    // NOLINTNEXTLINE(google-explicit-constructor): a value is returned as it stands
    Result(T value) : value_(std::move(value)) {}
    // NOLINTNEXTLINE(google-explicit-constructor): likewise
    Result(Failure failure) : value_(std::move(failure)) {}

    bool ok() const { return std::holds_alternative<T>(value_); }
    /// Only when ok().
    const T& value() const& {
        assert(ok());
        return std::get<T>(value_);
    }
    T& value() & {
        assert(ok());
        return std::get<T>(value_);
    }
    T&& value() && {
        assert(ok());
        return std::get<T>(std::move(value_));
    }
    /// Only when not ok().
    const Failure& failure() const {
        assert(!ok());
        return std::get<Failure>(value_);
    }
    Status status() const { return ok() ? Status::Ok() : Status(failure()); }

  private:
    std::variant<T, Failure> value_;
};

/// Goes on after an optional step. The reason is for the reader of the call.
inline void IgnoreFailure(const Status&, std::string_view /*why_that_is_right*/) {}
template <class T>
void IgnoreFailure(const Result<T>&, std::string_view /*why_that_is_right*/) {}

}  // namespace zorvane
