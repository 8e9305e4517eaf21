// What an engine holds for its compares of two folders.
#pragma once

#include "compare/engine/folder_scan.h"
#include "compare/engine/vestrel_x.h"

namespace zorvane {

struct VestrelX::FolderState {
    PerSide<std::string> folders;
    FolderScanOptions options;
    FolderCompareEvents* events = nullptr;
    FolderScan scan;
};

}  // namespace zorvane
