#pragma once

#include <QtGlobal>

/// Whether an installer that still runs after this long is given up.
constexpr bool installerTookTooLong(qint64 elapsed_ms)
{
	constexpr qint64 limit_ms = qint64{15} * 60 * 1000;
	return elapsed_ms > limit_ms;
}
