#include <QStringList>

#include "hotkey/clip_hotkey.hpp"
#include "hotkey/hotkey_conflicts.hpp"

namespace {
struct ConflictSearch {
	obs_key_combination combination{};
	QStringList found{};
};

bool addIfConflicting(void *data, size_t, obs_hotkey_binding_t *binding)
{
	auto *search = static_cast<ConflictSearch *>(data);
	const obs_key_combination bound = obs_hotkey_binding_get_key_combination(binding);
	if (obs_hotkey_binding_get_hotkey_id(binding) == clipHotkeyId() || bound.key != search->combination.key ||
	    bound.modifiers != search->combination.modifiers)
		return true;

	const obs_hotkey_t *hotkey = obs_hotkey_binding_get_hotkey(binding);
	search->found << (hotkey ? QString::fromUtf8(obs_hotkey_get_description(hotkey))
				 : QStringLiteral("another OBS hotkey"));
	return true;
}
} // namespace

QStringList hotkeyConflicts(const obs_key_combination &combination)
{
	ConflictSearch search{combination};
	obs_enum_hotkey_bindings(addIfConflicting, &search);
	return search.found;
}

QString hotkeySetText(const QString &combinationText, const QStringList &conflicts)
{
	if (conflicts.isEmpty())
		return QStringLiteral("Hotkey set: ") + combinationText +
		       QStringLiteral(" (also in Settings → Hotkeys).");
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
	if (conflicts.isEmpty())
		return QStringLiteral("Suggested default");
	return QStringLiteral("Warning: Ctrl+Shift+C is already used by ") + conflicts.join(u", ");
}
