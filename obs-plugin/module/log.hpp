#pragma once

#include <util/base.h>

/// Writes one line to the OBS log, with "[kestrune] " in front. `level` is an OBS log level (LOG_INFO ...), `format`
/// a printf format for the further arguments. May be called on any thread.
#if defined(__GNUC__)
[[gnu::format(printf, 2, 3)]]
#endif
void moduleLog(int level, const char *format, ...);
