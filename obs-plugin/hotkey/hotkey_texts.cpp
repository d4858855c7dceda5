#include "hotkey/hotkey_texts.hpp"

using namespace Qt::StringLiterals;

QString hotkeySetText(const QString &combinationText, const QStringList &conflicts)
{
	if (conflicts.isEmpty()) {
		return QStringLiteral("Hotkey set: ") + combinationText +
		       QStringLiteral(" (also in Settings → Hotkeys).");
	}
	return QStringLiteral("Hotkey set: %1, but it is also used by \"%2\"; both will fire. "
			      "Pick another with Set hotkey.")
		.arg(combinationText, conflicts.join(QStringLiteral("\", \"")));
}

QString defaultHotkeyText(const QStringList &conflicts)
{
	return conflicts.isEmpty() ? QStringLiteral("Use Ctrl+Shift+C") : QStringLiteral("Use Ctrl+Shift+C (in use!)");
}

QString defaultHotkeyToolTip(const QStringList &conflicts)
{
	if (conflicts.isEmpty()) {
		return QStringLiteral("Suggested default");
	}
	return QStringLiteral("Warning: Ctrl+Shift+C is already used by ") + conflicts.join(u", ");
}
