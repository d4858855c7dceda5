#pragma once

#include <QPushButton>

/// What the clip button depends on.
struct ClipReadiness {
	bool linked{false};
	bool replayBufferActive{false};
	bool linking{false};
};

/// Whether the clip button is enabled. Clips in the making do not matter: several may run at once.
bool canClip(const ClipReadiness &readiness);

/// The tooltip: what the button does, or what is missing.
QString clipButtonToolTip(const ClipReadiness &readiness);

/// The big button "Clip that". No Q_OBJECT: themes must see a plain QPushButton.
class ClipButton : public QPushButton {
public:
	ClipButton();

	/// Enables or disables the button and sets its tooltip.
	void showReadiness(const ClipReadiness &readiness);
};
