#include <obs.h>

// obs-module.h declares this one without EXPORT, which must not be added to a function afterwards.
extern "C" EXPORT obs_module_t *obs_current_module();

#include <obs-module.h>

// The handle that OBS gives the module at its start, and that libobs's functions for modules ask for. User-interface
// thread.

namespace {
obs_module_t *modulePointer = nullptr;
} // namespace

MODULE_EXPORT void obs_module_set_pointer(obs_module_t *newModule)
{
	modulePointer = newModule;
}

obs_module_t *obs_current_module()
{
	return modulePointer;
}
