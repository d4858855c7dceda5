#include <obs-module.h>

// Tests of plain functions are not loaded by OBS, so there is no module to answer.
MODULE_EXPORT obs_module_t *obs_current_module()
{
	return nullptr;
}
