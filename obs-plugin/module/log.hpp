#pragma once

#include <util/base.h>

/// Writes one line to the OBS log, prefixed with "[kestrune] ". `level` is LOG_INFO etc., `format` as for printf. Any
/// thread.
#if defined(__GNUC__)
[[gnu::format(printf, 2, 3)]]
#endif
void moduleLog(int level, const char *format, ...);
