#pragma once

#include <QtGlobal>

/// `full` at a full run, a small share of it, but at least 1, when this is only to show that the test still works.
inline int scaled(int full)
{
	return qEnvironmentVariableIsSet("KESTRUNE_FULL_SOAK") ? full : qMax(1, full / 250);
}
