// Preloaded into xdotool and into OBS: appends the time of each key press that xdotool makes, and of each request to
// save a replay that reaches OBS's Replay Buffer, to the file PRESS_TIMES_FILE, as "press" or "save" and nanoseconds of
// the monotonic clock.

#include <dlfcn.h>
#include <fcntl.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace {
void note(const char *what)
{
	timespec now{};
	clock_gettime(CLOCK_MONOTONIC, &now);
	std::array<char, 64> line{};
	const int length =
		std::snprintf(line.data(), line.size(), "%s %lld\n", what, now.tv_sec * 1'000'000'000LL + now.tv_nsec);
	const char *path = std::getenv("PRESS_TIMES_FILE");
	const int file = path ? open(path, O_WRONLY | O_APPEND | O_CREAT, 0600) : -1;
	if (file < 0 || write(file, line.data(), static_cast<size_t>(length)) != length) {
		std::abort();
	}
	close(file);
}
} // namespace

/// libXtst's: xdotool presses and releases keys with it.
extern "C" __attribute__((visibility("default"))) int XTestFakeKeyEvent(void *display, unsigned key, int isPress,
									unsigned long delay)
{
	using Function = int (*)(void *, unsigned, int, unsigned long);
	static const auto original = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "XTestFakeKeyEvent"));
	if (isPress) {
		note("press");
	}
	return original(display, key, isPress, delay);
}

/// libobs's: whoever asks for it, the Replay Buffer first calls this when it is to save, and at no other time.
extern "C" __attribute__((visibility("default"))) bool obs_encoder_paused(const void *encoder)
{
	using Function = bool (*)(const void *);
	static const auto original = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "obs_encoder_paused"));
	note("save");
	return original(encoder);
}
