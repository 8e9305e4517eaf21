#pragma once

#include <unistd.h>

// Some systems leave the declaration to whoever uses it; others have it in <unistd.h>.
extern char** environ;  // NOLINT(readability-redundant-declaration)
