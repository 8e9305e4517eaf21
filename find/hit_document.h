// The document of a hit as a whole, for somebody who looks at it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/platform/file_stamp.h"
#include "compare/document/editor.h"
#include "compare/document/rich_text.h"
#include "find/engine/line_finder.h"
#include "find/hit_choice.h"

namespace zorvane {

struct ProcessState;

struct HitDocument {
    std::string file;
    std::optional<FileStamp> state;  ///< of the file, when it was loaded
    RichText text;
    std::string reason;  ///< why there is none; empty: there is one
};

/// With its formats, where it has any; of `passwords` the one that opens it. On any thread;
/// `process` outlives the call. `known` comes back where it still is that file.
std::shared_ptr<const HitDocument> LoadHitDocument(ProcessState& process, const std::string& file,
                                                   std::shared_ptr<const HitDocument> known,
                                                   const std::vector<std::string>& passwords,
                                                   const std::function<bool()>& stop);

/// Where the hit stands in a text whose lines may be a few more or fewer than those that were
/// searched: in the line nearest to its own that says the same as `line`, else that has what was
/// found in it. A length of -1: nobody knows.
TextRange PlaceInDocument(std::u16string_view text, const ShownHit& hit, std::string_view line);

/// All places in a line, for marks. Of one thread.
class FoundInLine {
  public:
    explicit FoundInLine(const FindRules& rules);
    std::vector<TextRange> operator()(std::u16string_view line);

  private:
    std::shared_ptr<LineFinder> finder_;  // null: the expression is none
    std::shared_ptr<MatchScratch> scratch_;
};

}  // namespace zorvane
