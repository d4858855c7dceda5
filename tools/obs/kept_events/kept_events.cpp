// Preloaded into every OBS that tools/obs/session.mjs starts. After each frame OBS's graphics thread polls the X
// connection that it shares with Qt and discards the events it gets, so Qt never sees those: in tests, about one click
// in several hundred was never released. This library hides events from that thread.

#include <dlfcn.h>

#include <cstdlib>
#include <string_view>

namespace {
using PollForEvent = void *(*)(void *connection);

/// Keeps it out of programs that OBS starts.
__attribute__((constructor)) void keepToThisProgram()
{
	unsetenv("LD_PRELOAD");
}

bool isInGraphicsModule(const void *address)
{
	Dl_info info{};
	return dladdr(address, &info) != 0 &&
	       std::string_view(info.dli_fname).find("libobs-opengl") != std::string_view::npos;
}
} // namespace

extern "C" __attribute__((visibility("default"))) void *xcb_poll_for_event(void *connection)
{
	static const auto original = reinterpret_cast<PollForEvent>(dlsym(RTLD_NEXT, "xcb_poll_for_event"));
	return isInGraphicsModule(__builtin_return_address(0)) ? nullptr : original(connection);
}
