#include "hotkey/hotkey_texts.hpp"

using namespace Qt::StringLiterals;

QString hotkeySetText(const QString &combinationText, const QStringList &conflicts)
{
	if (conflicts.isEmpty()) {
		return u"Hotkey set: "_s + combinationText + u" (also in Settings → Hotkeys)."_s;
	}
	return u"Hotkey set: %1, but it is also used by \"%2\"; both will fire. "
	       "Pick another with Set hotkey."_s.arg(combinationText, conflicts.join(u"\", \""_s));
}

QString defaultHotkeyText(const QStringList &conflicts)
{
	return conflicts.isEmpty() ? u"Use Ctrl+Shift+C"_s : u"Use Ctrl+Shift+C (in use!)"_s;
}

QString defaultHotkeyToolTip(const QStringList &conflicts)
{
	if (conflicts.isEmpty()) {
		return u"Suggested default"_s;
	}
	return u"Warning: Ctrl+Shift+C is already used by "_s + conflicts.join(u", ");
}
