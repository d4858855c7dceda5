#include <QStringList>

#include "hotkey/combination_text.hpp"

#include <obs.h>

using namespace Qt::StringLiterals;

QString hotkeyComboText(const obs_key_combination &combination)
{
	QStringList parts;
	const auto addModifier = [&](uint32_t modifier, const QString &name) {
		if ((combination.modifiers & modifier) != 0) {
			parts << name;
		}
	};
	addModifier(INTERACT_CONTROL_KEY, u"Ctrl"_s);
	addModifier(INTERACT_ALT_KEY, u"Alt"_s);
	addModifier(INTERACT_SHIFT_KEY, u"Shift"_s);
	addModifier(INTERACT_COMMAND_KEY, u"Win"_s);

	if (combination.key != OBS_KEY_NONE) {
		QString name = QString::fromUtf8(obs_key_to_name(combination.key));
		if (name.startsWith(u"OBS_KEY_")) {
			name.remove(0, 8);
		}
		parts << name;
	}
	return parts.join(u'+');
}
