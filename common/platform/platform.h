// All services of the system in one record, handed over at construction.
#pragma once

#include <memory>

#include "common/platform/services.h"

namespace zorvane {

struct Platform {
    std::unique_ptr<Clock> clock;
    std::unique_ptr<Sound> sound;
    std::unique_ptr<SpecialFolders> folders;
    std::unique_ptr<ShellOpen> shell;
    std::unique_ptr<UserLocale> locale;
    std::unique_ptr<RegistryStore> registry;
    std::unique_ptr<NamedMutexes> mutexes;
    std::unique_ptr<TempFiles> temp_files;
};

/// The POSIX services. Nothing is touched before the first call of each.
Platform MakePosixPlatform();

}  // namespace zorvane
