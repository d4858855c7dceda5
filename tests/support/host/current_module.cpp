#include <obs-module.h>

// Without OBS there is no module handle.
MODULE_EXPORT obs_module_t *obs_current_module()
{
	return nullptr;
}
