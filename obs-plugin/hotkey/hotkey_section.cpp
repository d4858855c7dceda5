#include <QLabel>
#include <QPushButton>

#include "dock/kestrune_dock.hpp"
#include "hotkey/binding_record.hpp"
#include "hotkey/clip_hotkey.hpp"
#include "hotkey/hotkey_conflicts.hpp"
#include "hotkey/hotkey_text.hpp"

void KestruneDock::refreshHotkeyUi()
{
	if (!hotkeyLabel_)
		return;

	const QString current = currentHotkeyText();
	hotkeyLabel_->setText(QStringLiteral("Hotkey: ") + (current.isEmpty() ? QStringLiteral("not set") : current));
	if (capturing_)
		setHotkeyButton_->setText(QStringLiteral("Press keys… (Esc cancels)"));
	else
		setHotkeyButton_->setText(current.isEmpty() ? QStringLiteral("Set hotkey") : QStringLiteral("Change"));

	const QStringList conflicts = hotkeyConflicts(defaultCombination());
	defaultHotkeyButton_->setVisible(current.isEmpty() && clipHotkeyId() != OBS_INVALID_HOTKEY_ID);
	defaultHotkeyButton_->setToolTip(defaultHotkeyToolTip(conflicts));
	defaultHotkeyButton_->setText(defaultHotkeyText(conflicts));
}

bool KestruneDock::applyHotkey(const obs_key_combination &combination)
{
	if (clipHotkeyId() == OBS_INVALID_HOTKEY_ID || combination.key == OBS_KEY_NONE)
		return false;

	const QStringList conflicts = hotkeyConflicts(combination);
	{
		const OBSDataArrayAutoRelease bindings = hotkeyComboToData(combination);
		bindClipHotkey(bindings);
		storeHotkeyInSettings(bindings);
	}
	refreshHotkeyUi();
	setStatus(hotkeySetText(hotkeyComboText(combination), conflicts), !conflicts.isEmpty());
	return true;
}

void KestruneDock::applyDefaultHotkey()
{
	applyHotkey(defaultCombination());
}
