#include "redline/odt_regions.h"

#include <algorithm>

#include "redline/odt_story.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

}  // namespace

std::string OdtStamp::NewId() {
    std::string id;
    do {
        id = "ct" + std::to_string(next_id++);
    } while (taken.contains(id));
    return id;
}

Node OdtRegions::NewRegion(const char* kind, std::string& id) {
    if (!list_) {
        const Node forms = Child(story_, "forms");
        list_ = forms ? story_.insert_child_after("text:tracked-changes", forms)
                      : story_.prepend_child("text:tracked-changes");
    }
    id = stamp_.NewId();
    Node region = list_.append_child("text:changed-region");
    region.append_attribute("xml:id") = id.c_str();
    region.append_attribute("text:id") = id.c_str();
    Node change = region.append_child(kind);
    Node info = change.append_child("office:change-info");
    info.append_child("dc:creator").text().set(stamp_.author.c_str());
    info.append_child("dc:date").text().set(stamp_.date.c_str());
    return change;
}

std::string OdtRegions::AddInsertion() {
    std::string id;
    NewRegion("text:insertion", id);
    return id;
}

std::string OdtRegions::AddDeletion(Node& content) {
    std::string id;
    content = NewRegion("text:deletion", id);
    return id;
}

void PutMarks(Node paragraph, std::vector<OdtMark> marks) {
    std::stable_sort(marks.begin(), marks.end(), [](const OdtMark& one, const OdtMark& other) {
        return one.place < other.place;
    });
    // From the last place to the first, so that earlier ones stay valid.
    for (std::size_t end = marks.size(); end > 0;) {
        std::size_t begin = end - 1;
        while (begin > 0 && marks[begin - 1].place == marks[begin].place)
            --begin;
        const Node behind = OdtCut(paragraph, marks[begin].place);
        for (std::size_t i = begin; i < end; ++i) {
            Node mark = behind ? paragraph.insert_child_before(marks[i].element, behind)
                               : paragraph.append_child(marks[i].element);
            mark.append_attribute("text:change-id") = marks[i].id.c_str();
        }
        end = begin;
    }
}

}  // namespace zorvane
