#pragma once

#ifdef _WIN32
#include "support/windows_running_program.h"
#else
#include "support/posix_running_program.h"
#endif
