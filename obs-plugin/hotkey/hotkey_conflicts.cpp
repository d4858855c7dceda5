#include <QStringList>

#include "hotkey/clip_hotkey.hpp"
#include "hotkey/hotkey_conflicts.hpp"

using namespace Qt::StringLiterals;

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
	    bound.modifiers != search->combination.modifiers) {
		return true;
	}

	const obs_hotkey_t *hotkey = obs_hotkey_binding_get_hotkey(binding);
	search->found << (hotkey ? QString::fromUtf8(obs_hotkey_get_description(hotkey)) : u"another OBS hotkey"_s);
	return true;
}
} // namespace

QStringList hotkeyConflicts(const obs_key_combination &combination)
{
	ConflictSearch search{combination};
	obs_enum_hotkey_bindings(addIfConflicting, &search);
	return search.found;
}
