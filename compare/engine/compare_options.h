// What one compare is asked for.
#pragma once

#include <cstdint>
#include <string>

#include "common/base/run_watcher.h"

namespace zorvane {

/// A copy, so that nobody changes it while a compare goes on.
struct CompareOptions {
    bool ignore_case = false;
    bool ignore_whitespace = false;
    bool ignore_empty_lines = false;  ///< blank paragraphs, padded blank rows too
    bool faster = false;              ///< looks less hard for partners
    bool larger_sections = false;     ///< joins what stands close together
    std::int32_t bracket = 0;  ///< 0: none; else a partner stands at most this many paragraphs from
                               ///< where the paragraphs before it put it
    std::string expressions{};     ///< as `LineFilter` takes them; empty: none
    bool filter_sections = false;  ///< the expressions hold inside changed paragraphs too
    bool find_sections = true;     ///< words inside changed paragraphs
    bool by_character = false;     ///< letters inside changed words
    bool find_moves = true;
    friend bool operator==(const CompareOptions&, const CompareOptions&) = default;
};

}  // namespace zorvane
