// The list of changes of one story of an OpenDocument text, and the marks in its paragraphs.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "redline/marks.h"

namespace zorvane {

/// Who, when, and ids that stand nowhere else in the package.
struct OdtStamp {
    std::string author;
    std::string date;
    std::int64_t next_id = 1;
    std::set<std::string> taken{};  ///< ids of the Modified

    std::string NewId();
};

class OdtRegions {
  public:
    OdtRegions(pugi::xml_node story, OdtStamp& stamp) : story_(story), stamp_(stamp) {}

    /// Id of a new change.
    std::string AddInsertion();
    /// The same; `content` is where what was deleted goes.
    std::string AddDeletion(pugi::xml_node& content);
    bool Empty() const { return !list_; }

  private:
    pugi::xml_node NewRegion(const char* kind, std::string& id);

    pugi::xml_node story_;
    pugi::xml_node list_;
    OdtStamp& stamp_;
};

/// A mark that waits until all places of its paragraph are known.
struct OdtMark {
    std::size_t place = 0;
    const char* element = "text:change";
    std::string id;
};

/// Puts the marks into the paragraph, those of one place in their order.
void PutMarks(pugi::xml_node paragraph, std::vector<OdtMark> marks);

}  // namespace zorvane
