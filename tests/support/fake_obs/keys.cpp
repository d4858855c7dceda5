#include <obs.h>

#include <windows.h>

#include <array>
#include <cstring>

namespace {
constexpr std::array names{
#define OBS_HOTKEY(name) #name,
#include <obs-hotkeys.h>
#undef OBS_HOTKEY
};

struct VirtualKey {
	obs_key_t key;
	int code;
};
// Letters, digits and function keys have consecutive codes instead.
constexpr VirtualKey virtualKeys[]{
	{OBS_KEY_RETURN, VK_RETURN},   {OBS_KEY_ESCAPE, VK_ESCAPE},  {OBS_KEY_TAB, VK_TAB},
	{OBS_KEY_BACKSPACE, VK_BACK},  {OBS_KEY_INSERT, VK_INSERT},  {OBS_KEY_DELETE, VK_DELETE},
	{OBS_KEY_PAUSE, VK_PAUSE},     {OBS_KEY_PRINT, VK_SNAPSHOT}, {OBS_KEY_HOME, VK_HOME},
	{OBS_KEY_END, VK_END},         {OBS_KEY_PAGEUP, VK_PRIOR},   {OBS_KEY_PAGEDOWN, VK_NEXT},
	{OBS_KEY_LEFT, VK_LEFT},       {OBS_KEY_RIGHT, VK_RIGHT},    {OBS_KEY_UP, VK_UP},
	{OBS_KEY_DOWN, VK_DOWN},       {OBS_KEY_SPACE, VK_SPACE},    {OBS_KEY_SHIFT, VK_SHIFT},
	{OBS_KEY_CONTROL, VK_CONTROL}, {OBS_KEY_ALT, VK_MENU},
};
} // namespace

const char *obs_key_to_name(obs_key_t key)
{
	const auto index = static_cast<size_t>(key);
	return index < names.size() ? names[index] : names[OBS_KEY_NONE];
}

obs_key_t obs_key_from_name(const char *name)
{
	for (size_t index = 0; index < names.size(); ++index) {
		if (std::strcmp(names[index], name) == 0) {
			return static_cast<obs_key_t>(index);
		}
	}
	return OBS_KEY_NONE;
}

int obs_key_to_virtual_key(obs_key_t key)
{
	if (key >= OBS_KEY_A && key <= OBS_KEY_Z) {
		return 'A' + key - OBS_KEY_A;
	}
	if (key >= OBS_KEY_0 && key <= OBS_KEY_9) {
		return '0' + key - OBS_KEY_0;
	}
	if (key >= OBS_KEY_F1 && key <= OBS_KEY_F24) {
		return VK_F1 + key - OBS_KEY_F1;
	}
	for (const VirtualKey &known : virtualKeys) {
		if (known.key == key) {
			return known.code;
		}
	}
	return 0;
}

obs_key_t obs_key_from_virtual_key(int code)
{
	for (int key = 0; key < OBS_KEY_LAST_VALUE; ++key) {
		if (obs_key_to_virtual_key(static_cast<obs_key_t>(key)) == code) {
			return static_cast<obs_key_t>(key);
		}
	}
	return OBS_KEY_NONE;
}
