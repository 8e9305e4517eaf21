// What the pictures of the kit show in dialogs.
#pragma once

#include <memory>

#include <QString>

#include "common/ui/dialog.h"

namespace zorvane {

/// `other` stands for a language whose captions are long.
inline QString Words(bool german, const char* english, const char* other) {
    return QString::fromUtf8(german ? other : english);
}

std::unique_ptr<Dialog> MakeFormDialog(bool german);
std::unique_ptr<Dialog> MakeWideDialog(bool german);

}  // namespace zorvane
