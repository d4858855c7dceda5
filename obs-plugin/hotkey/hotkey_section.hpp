#pragma once

#include <QObject>

struct obs_key_combination;

class QBoxLayout;
class QEvent;
class QKeyEvent;
class QPushButton;
class StatusLine;
class TextLabel;

/// The section "Hotkey & Stream Deck": the clip hotkey's bindings, and binding it with a key press.
class HotkeySection : public QObject {
public:
	HotkeySection(QBoxLayout *content, QObject *dock, StatusLine &status);

	/// The next key press becomes the binding.
	void startHotkeyCapture();
	/// Shows the bindings that the hotkey has now.
	void refreshHotkeyUi();
	/// Looks at an event before it reaches `watched`, as the dock's event filter does; true when a capture has used
	/// it. A capture also claims shortcuts.
	bool filterEvent(const QObject *watched, QEvent *event);

private:
	void endHotkeyCapture();
	void bindPressed(const QKeyEvent &keyPress);
	/// Binds the hotkey to `combination`, stores it and says so; false when nothing was done.
	bool applyHotkey(const obs_key_combination &combination);
	void applyDefaultHotkey();

	QObject *dock_{nullptr};
	StatusLine &status_;
	TextLabel *label_{nullptr};
	QPushButton *setButton_{nullptr};
	QPushButton *defaultButton_{nullptr};
	bool capturing_{false};
};
