#include "clip/clip_readiness.hpp"

bool canClip(const ClipReadiness &readiness)
{
	return readiness.linked && readiness.replayBufferActive && !readiness.linking;
}

QString clipButtonToolTip(const ClipReadiness &readiness)
{
	if (!readiness.linked)
		return QStringLiteral("Connect your Kestrune account first (Connect account below).");
	if (readiness.replayBufferActive)
		return QStringLiteral("Save the last few seconds and turn them into a vertical Short.");
	return QStringLiteral("The Replay Buffer isn't running. Kestrune starts it for you; "
			      "if it stays off, open Settings → OK or restart OBS once.");
}
