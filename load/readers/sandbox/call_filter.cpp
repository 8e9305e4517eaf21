#include "load/readers/sandbox/call_filter.h"

#include "common/platform/system_failure.h"

namespace zorvane {

CallFilter::CallFilter(std::uint32_t otherwise) : context_(seccomp_init(otherwise)) {
    if (context_ == nullptr) {
        error_ = ENOMEM;
        return;
    }
    // Calls of another architecture, such as those of 32-bit programs, have other numbers.
    Note(seccomp_attr_set(context_, SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_KILL_PROCESS));
}

CallFilter::~CallFilter() {
    if (context_ != nullptr)
        seccomp_release(context_);
}

void CallFilter::Note(int result) {
    if (error_ == 0 && result != 0)
        error_ = -result;
}

void CallFilter::Add(std::uint32_t action, std::initializer_list<int> calls) {
    for (const int call : calls)
        AddWhere(action, call, {});
}

void CallFilter::AddWhere(std::uint32_t action, int call,
                          std::initializer_list<scmp_arg_cmp> conditions) {
    if (error_ == 0)
        Note(seccomp_rule_add_array(context_, action, call,
                                    static_cast<unsigned>(conditions.size()), conditions.begin()));
}

Status CallFilter::Load() {
    if (error_ == 0)
        Note(seccomp_load(context_));
    if (error_ == 0)
        return Status::Ok();
    return SystemFailure("no filter of system calls", error_);
}

}  // namespace zorvane
