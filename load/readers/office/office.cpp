#include "load/readers/office/office.h"

#include "load/readers/office/office_files.h"

namespace zorvane {

std::unique_ptr<OfficeSession> OfficeSession::Make(const OfficePlace& place,
                                                   const std::string& profile_folder,
                                                   std::chrono::milliseconds child_time_limit) {
    return place.has_library ? MakeOfficeLibrary(place, profile_folder, child_time_limit)
                             : MakeOfficeProgram(place, profile_folder, child_time_limit);
}

}  // namespace zorvane
