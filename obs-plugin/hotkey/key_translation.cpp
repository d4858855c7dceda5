#include <QKeyEvent>

#include "hotkey/key_translation.hpp"

#include <obs.h>

using namespace Qt::StringLiterals;

namespace {
obs_key_t namedKey(const QString &name)
{
	return obs_key_from_name(u"OBS_KEY_%1"_s.arg(name).toUtf8().constData());
}
} // namespace

obs_key_t qtKeyToObsKey(const QKeyEvent &event)
{
	const obs_key_t key = obs_key_from_virtual_key(static_cast<int>(event.nativeVirtualKey()));
	return key != OBS_KEY_NONE ? key : obsKeyFromQtKey(event.key());
}

obs_key_t obsKeyFromQtKey(int qtKey)
{
	if ((qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) || (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9)) {
		return namedKey(QChar(qtKey));
	}
	if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24) {
		return namedKey(u"F%1"_s.arg(qtKey - Qt::Key_F1 + 1));
	}

	switch (qtKey) {
	case Qt::Key_Space:
		return OBS_KEY_SPACE;
	case Qt::Key_Insert:
		return OBS_KEY_INSERT;
	case Qt::Key_Pause:
		return OBS_KEY_PAUSE;
	case Qt::Key_Home:
		return OBS_KEY_HOME;
	case Qt::Key_End:
		return OBS_KEY_END;
	case Qt::Key_PageUp:
		return OBS_KEY_PAGEUP;
	case Qt::Key_PageDown:
		return OBS_KEY_PAGEDOWN;
	default:
		return OBS_KEY_NONE;
	}
}

uint32_t obsModifiers(Qt::KeyboardModifiers modifiers)
{
	const auto bit = [modifiers](Qt::KeyboardModifier modifier, uint32_t obsModifier) {
		return modifiers.testFlag(modifier) ? obsModifier : 0U;
	};
	return bit(Qt::ControlModifier, INTERACT_CONTROL_KEY) | bit(Qt::ShiftModifier, INTERACT_SHIFT_KEY) |
	       bit(Qt::AltModifier, INTERACT_ALT_KEY) | bit(Qt::MetaModifier, INTERACT_COMMAND_KEY);
}
