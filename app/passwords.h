// Passwords on roads that the list of processes does not show.
#pragma once

#include "app/load_options.h"
#include "common/base/result.h"

namespace zorvane {

/// Fills the passwords that the command line did not give: from `password_file` (its first line
/// opens either document; with a second line they are the original's and the modified's), from a
/// prompt without echo under `ask_password`, else from $ZORVANE_PASSWORD. Fails when the file
/// cannot be read or there is no terminal to ask on.
Status FillPasswords(LoadOptions& options);

}  // namespace zorvane
