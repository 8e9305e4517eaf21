// What both roads to an office suite share: where the suite may be, the formats it writes, and the
// folder in which a document is handed over.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "load/readers/office/office.h"

namespace zorvane {

/// Numbered as the suite's library numbers them.
enum class OfficeDocumentKind { Text = 0, Spreadsheet = 1, Presentation = 2, Other = 3 };

struct OfficeFormat {
    std::string_view name;    ///< which is also the extension
    std::string_view filter;  ///< the suite's name of its writer
    OfficeDocumentKind kind;
};
/// Null for a format that is not offered.
const OfficeFormat* FindOfficeFormat(std::string_view name);
bool HasPartFor(const OfficePlace& place, OfficeDocumentKind kind);

/// "file:///a%20b" for an absolute path; any byte but the plainest is written as a number.
std::string FileUrl(std::string_view path);

/// The folder that belongs to one session: the suite's profile, its temporary files, the document
/// that comes in and the one that goes out. The suite is shown no folder of the user's, where it
/// could leave a lock file or find what a document links to by its place.
class OfficeFolder {
  public:
    explicit OfficeFolder(const std::string& path);

    /// Makes what is missing; true when the folder is ready. A profile that is there is kept.
    [[nodiscard]] bool Prepare() const;

    std::string ProfileUrl() const { return FileUrl(path_.string()); }
    std::string Temporary() const { return path_ / "temporary"; }
    std::string ResultFolder() const { return path_ / "result"; }

    /// Copies the document in under its own name, which it may show. `path` is where.
    ReadEnd Offer(const OfficeTask& task, std::string& path) const;
    /// Copies the only file of the result folder out.
    ReadEnd Deliver(const OfficeTask& task) const;

  private:
    std::filesystem::path path_;
};

/// The two roads, for `OfficeSession::Make`.
std::unique_ptr<OfficeSession> MakeOfficeLibrary(const OfficePlace& place,
                                                 const std::string& profile_folder,
                                                 std::chrono::milliseconds child_time_limit);
std::unique_ptr<OfficeSession> MakeOfficeProgram(const OfficePlace& place,
                                                 const std::string& profile_folder,
                                                 std::chrono::milliseconds time_limit);

}  // namespace zorvane
