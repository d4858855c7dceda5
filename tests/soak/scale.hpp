#pragma once

#include <QtGlobal>

/// `full` in a full run, otherwise a small share of it, at least 1.
inline int scaled(int full)
{
	return qEnvironmentVariableIsSet("KESTRUNE_FULL_SOAK") ? full : qMax(1, full / 250);
}
