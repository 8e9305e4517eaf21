// A list of system calls and what becomes of each, loaded into the kernel. Uses libseccomp.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <seccomp.h>
#include <string>

#include "common/base/result.h"

namespace zorvane {

/// Conditions on an argument of a call.
inline scmp_arg_cmp ArgumentIs(unsigned argument, std::uint64_t value) {
    return {argument, SCMP_CMP_EQ, value, 0};
}
inline scmp_arg_cmp ArgumentBits(unsigned argument, std::uint64_t mask, std::uint64_t bits) {
    return {argument, SCMP_CMP_MASKED_EQ, mask, bits};
}

class CallFilter {
  public:
    /// `otherwise`: for calls that are not named.
    explicit CallFilter(std::uint32_t otherwise);
    ~CallFilter();
    CallFilter(const CallFilter&) = delete;
    CallFilter& operator=(const CallFilter&) = delete;

    void Add(std::uint32_t action, std::initializer_list<int> calls);
    /// Only where all `conditions` on the arguments hold.
    void AddWhere(std::uint32_t action, int call, std::initializer_list<scmp_arg_cmp> conditions);
    /// From here on, for good. The first reason of a failure is told: libseccomp asks the kernel
    /// for its actions, so that a rule can fail before the loading does.
    Status Load();

  private:
    void Note(int result);

    scmp_filter_ctx context_;
    int error_ = 0;
};

}  // namespace zorvane
