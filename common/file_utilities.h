// Files and folders: tests, trees, deletes with retries, copies. Paths are as a user gives them.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "common/base/result.h"
#include "common/base/run_watcher.h"

namespace zorvane {

class Clock;
class SpecialFolders;
class TempFiles;

bool bFileExists(std::string_view sPath);  ///< a file of any kind but a folder; blanks trimmed
bool bDirectoryExists(std::string_view sPath);
std::string sStripTrailingBackslash(std::string_view sPath);
std::string sGetFolderPart(std::string_view sPath);  ///< up to and including the last separator
void MakeDirectoryTree(std::string_view sPath);      ///< parents first; errors are ignored
/// True when a small test file can be made in the folder and removed.
bool bFolderIsWritable(std::string_view sPath, Clock& clock);

/// True when the file is gone: at once if it does not exist. A failed delete is tried again each
/// second, 20 times.
bool DeleteFileWithRetry(Clock& clock, const std::string& sPath);
/// Copies; a protected target is unprotected, overwritten, and protected again.
/// `mode`: see `ReplaceFile`. After a stop the target is as it was.
Status CopyFileReplacingReadOnly(const std::string& sFrom, const std::string& sTo,
                                 std::uint32_t mode = 0666, RunWatcher* watcher = nullptr);
Status MoveFileByCopy(const std::string& sFrom, const std::string& sTo);

/// A free name: folder, prefix, a random number of 8 digits less the prefix, ".", extension ("TMP"
/// if empty). Empty when all tries fail. The file is not made. An empty folder is the temporary
/// one.
std::string sMakeTempFileName(TempFiles& temp_files, std::string_view sFolder,
                              std::string_view sPrefix, std::string_view sExtension);
/// A name for a new temporary file that ends in ".DOC", whatever it will hold; empty on failure.
std::string GetTempNameWithDocExtension(TempFiles& temp_files, std::string_view sPrefix);

/// Local time as "year/month/day hour:minute:second", and back (nothing for another form).
std::string sMakeTimeStamp(std::chrono::system_clock::time_point time);
Result<std::chrono::system_clock::time_point> ParseTimeStamp(const std::string& stamp);

}  // namespace zorvane
