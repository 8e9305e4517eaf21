// The engine's fixed names for a compare of two folders.
#include "compare/engine/folder_state.h"
#include "compare/engine/vestrel_x.h"

namespace zorvane {

void VestrelX::putMasterFolder(const std::string& folder) {
    folders_->folders.original = folder;
}
void VestrelX::putSourceFolder(const std::string& folder) {
    folders_->folders.modified = folder;
}
void VestrelX::putFileTypes(const std::string& patterns) {
    folders_->options.file_types = patterns;
}
void VestrelX::putContentCompare(bool on) {
    folders_->options.rules.content = on;
}
void VestrelX::putShowOnlyInMaster(bool on) {
    folders_->options.show_only_original = on;
}
void VestrelX::putShowOnlyInSource(bool on) {
    folders_->options.show_only_modified = on;
}
void VestrelX::putShowSameInBoth(bool on) {
    folders_->options.show_same = on;
}
void VestrelX::putShowDifferentInBoth(bool on) {
    folders_->options.show_different = on;
}
void VestrelX::putIgnoreDateDifferences(bool on) {
    folders_->options.ignore_dates = on;
}
void VestrelX::putSubfolders(bool on) {
    folders_->options.subfolders = on;
}
FolderScanOptions& VestrelX::FolderOptions() {
    return folders_->options;
}
void VestrelX::putFolderEvents(FolderCompareEvents* events) {
    folders_->events = events;
}

void VestrelX::StartFolderCompare() {
    folders_->scan.Start(folders_->folders, folders_->options, folders_->events);
}
bool VestrelX::getBusy() const {
    return folders_->scan.Busy();
}
std::int32_t VestrelX::getRecordCount() const {
    return static_cast<std::int32_t>(folders_->scan.Count());
}
std::optional<FolderRecord> VestrelX::GetFolderRecord(std::int32_t index) const {
    if (index < 0 || index >= getRecordCount())
        return std::nullopt;
    return folders_->scan.Record(static_cast<std::size_t>(index));
}
void VestrelX::AbortCompare() {
    folders_->scan.Abort();
}
void VestrelX::ReleaseEngine() {
    folders_->scan.Release();
}
FolderScan& VestrelX::Folders() {
    return folders_->scan;
}
const FolderScan& VestrelX::Folders() const {
    return folders_->scan;
}

}  // namespace zorvane
