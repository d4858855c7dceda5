#include <obs.h>

// obs-module.h declares it without EXPORT, which cannot be added afterwards.
extern "C" EXPORT obs_module_t *obs_current_module();

#include <obs-module.h>

// The handle that libobs's module functions ask for. User-interface thread.

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
