// Lets go of what is large without making its thread wait.
#pragma once

#include <system_error>
#include <thread>
#include <type_traits>
#include <utility>

namespace zorvane {

/// Giving back a gigabyte takes a tenth of a second or more, which a stop shall not take. Only for
/// values that own all they use; the end of the program need not wait for them.
template <class Value>
void FreeAside(Value&& value) {
    static_assert(!std::is_lvalue_reference_v<Value>, "what is let go is moved here");
    try {
        std::thread([gone = std::forward<Value>(value)]() mutable {
            const Value last = std::move(gone);
        }).detach();
    } catch (const std::system_error&) {
        // No thread is to be had: it goes here and now, with the closure.
        return;
    }
}

}  // namespace zorvane
