#pragma once

#include <QPushButton>

/// What decides whether a clip can be asked for.
struct ClipReadiness {
	bool linked{false};
	bool replayBufferActive{false};
	bool linking{false};
};

/// Whether the clip button is enabled. Clips still in the making do not matter: several may be.
bool canClip(const ClipReadiness &readiness);

/// The clip button's tooltip: what it does, or what is missing.
QString clipButtonToolTip(const ClipReadiness &readiness);

/// The big button "Clip that". Without Q_OBJECT it is a QPushButton to the selectors of themes.
class ClipButton : public QPushButton {
public:
	ClipButton();

	/// Enables the button, or not, and says why.
	void showReadiness(const ClipReadiness &readiness);
};
