#include <QStringList>

#include "hotkey/clip_hotkey.hpp"
#include "hotkey/combination_text.hpp"

QString hotkeyComboText(const obs_key_combination &combination)
{
	QStringList parts;
	const auto addModifier = [&](uint32_t modifier, const QString &name) {
		if ((combination.modifiers & modifier) != 0)
			parts << name;
	};
	addModifier(INTERACT_CONTROL_KEY, QStringLiteral("Ctrl"));
	addModifier(INTERACT_ALT_KEY, QStringLiteral("Alt"));
	addModifier(INTERACT_SHIFT_KEY, QStringLiteral("Shift"));
	addModifier(INTERACT_COMMAND_KEY, QStringLiteral("Win"));

	if (combination.key != OBS_KEY_NONE) {
		QString name = QString::fromUtf8(obs_key_to_name(combination.key));
		if (name.startsWith(u"OBS_KEY_"))
			name.remove(0, 8);
		parts << name;
	}
	return parts.join(u'+');
}

QString currentHotkeyText()
{
	if (clipHotkeyId() == OBS_INVALID_HOTKEY_ID)
		return {};

	QStringList texts;
	obs_enum_hotkey_bindings(
		[](void *data, size_t, obs_hotkey_binding_t *binding) {
			if (obs_hotkey_binding_get_hotkey_id(binding) == clipHotkeyId())
				*static_cast<QStringList *>(data)
					<< hotkeyComboText(obs_hotkey_binding_get_key_combination(binding));
			return true;
		},
		&texts);
	texts.removeAll(QString());
	return texts.join(u", ");
}
