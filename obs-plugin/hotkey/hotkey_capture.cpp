#include <QKeyEvent>
#include <QPushButton>

#include "dock/kestrune_dock.hpp"
#include "hotkey/key_translation.hpp"

void KestruneDock::startHotkeyCapture()
{
	capturing_ = true;
	setHotkeyButton_->installEventFilter(this);
	setHotkeyButton_->setFocus();
	setHotkeyButton_->grabKeyboard();
	refreshHotkeyUi();
}

bool KestruneDock::eventFilter(QObject *watched, QEvent *event)
{
	if (!capturing_ || watched != setHotkeyButton_ || event->type() != QEvent::KeyPress)
		return QWidget::eventFilter(watched, event);

	const auto *keyPress = static_cast<QKeyEvent *>(event);
	const int key = keyPress->key();
	if (key >= Qt::Key_Shift && key <= Qt::Key_Alt)
		return true; // a modifier alone: the combination is still being built

	endHotkeyCapture();
	if (key != Qt::Key_Escape) {
		const obs_key_combination combination{obsModifiers(keyPress->modifiers()), qtKeyToObsKey(*keyPress)};
		if (combination.key == OBS_KEY_NONE)
			setStatus(QStringLiteral("That key can't be used as a hotkey; "
						 "try a letter or F-key with Ctrl/Shift/Alt."),
				  true);
		else
			applyHotkey(combination);
	}
	refreshHotkeyUi();
	return true;
}

void KestruneDock::endHotkeyCapture()
{
	capturing_ = false;
	setHotkeyButton_->releaseKeyboard();
	setHotkeyButton_->removeEventFilter(this);
}
