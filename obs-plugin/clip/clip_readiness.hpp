#pragma once

#include <QString>

/// What decides whether a clip can be asked for.
struct ClipReadiness {
	bool linked{false};
	bool replayBufferActive{false};
	bool linking{false};
};

/// Whether the clip button is enabled. Clips still in the making do not matter: several may be.
bool canClip(const ClipReadiness &readiness);

/// The clip button's tool tip: what it does, or what is missing.
QString clipButtonToolTip(const ClipReadiness &readiness);
