// This file defines the functions themselves: their calls must not be replaced by checked ones.
#undef _FORTIFY_SOURCE

#include "cost.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string_view>

// AddressSanitizer's own, as its header has them, which not every compiler brings. Null without it.
extern "C" {
[[gnu::weak]] int __sanitizer_install_malloc_and_free_hooks(void (*onAllocated)(const volatile void *, std::size_t),
							    void (*onFreed)(const volatile void *));
[[gnu::weak]] std::size_t __sanitizer_get_allocated_size(const volatile void *memory);
}

namespace {
#ifdef KESTRUNE_SLOW_BUILD
constexpr int slowness = 5;
#else
constexpr int slowness = 1;
#endif

struct Watched {
	CostBounds bounds{};
	std::ptrdiff_t grown_bytes{0};
};

Watched current;
constinit thread_local Watched *watched = nullptr;

[[noreturn, gnu::format(printf, 1, 2)]] void violated(const char *format, ...)
{
	watched = nullptr;
	va_list arguments{};
	va_start(arguments, format);
	vdprintf(STDERR_FILENO, format, arguments);
	va_end(arguments);
	std::abort();
}

void onTimePassed(int)
{
	violated("cost: took longer than %d ms of the processor\n", current.bounds.time_ms * slowness);
}

void onAllocated(const volatile void *, std::size_t size)
{
	if (!watched) {
		return;
	}
	watched->grown_bytes += static_cast<std::ptrdiff_t>(size);
	if (watched->grown_bytes > static_cast<std::ptrdiff_t>(watched->bounds.memory_bytes)) {
		violated("cost: took more than %zu MiB of memory\n", watched->bounds.memory_bytes / 1024 / 1024);
	}
}

void onFreed(const volatile void *memory)
{
	if (watched && memory) {
		watched->grown_bytes -= static_cast<std::ptrdiff_t>(__sanitizer_get_allocated_size(memory));
	}
}

void onOpened(const char *path, int flags)
{
	if (!watched || path[0] == '\0') {
		return; // an empty path stands for a file that is open
	}
	if (!watched->bounds.mayOpen || !watched->bounds.mayOpen(path, flags)) {
		violated("cost: %s the file %s\n", flags == O_PATH ? "looked at" : "opened", path);
	}
}

/// A timer that ends the process when it runs out; it counts while this thread has the processor.
timer_t makeTimer()
{
	std::signal(SIGRTMIN, onTimePassed);
	sigevent event{};
	event.sigev_notify = SIGEV_SIGNAL;
	event.sigev_signo = SIGRTMIN;
	timer_t timer{};
	if (timer_create(CLOCK_THREAD_CPUTIME_ID, &event, &timer) != 0) {
		violated("cost: no timer\n");
	}
	return timer;
}

/// 0 stops the timer.
void setTimer(int time_ms)
{
	static const timer_t timer = makeTimer();
	itimerspec time{};
	time.it_value.tv_sec = time_ms / 1000;
	time.it_value.tv_nsec = time_ms % 1000 * 1'000'000L;
	timer_settime(timer, 0, &time, nullptr);
}

int openAt(int folder, const char *path, int flags, mode_t mode)
{
	onOpened(path, flags);
	return static_cast<int>(syscall(SYS_openat, folder, path, flags, mode));
}
} // namespace

bool isFontPath(const char *path)
{
	return std::string_view(path).find("/font") != std::string_view::npos;
}

CostWatch::CostWatch(const CostBounds &bounds)
{
	[[maybe_unused]] static const int hooked =
		__sanitizer_install_malloc_and_free_hooks
			? __sanitizer_install_malloc_and_free_hooks(onAllocated, onFreed)
			: 0;
	current = {.bounds = bounds};
	setTimer(bounds.time_ms * slowness);
	watched = &current;
}

CostWatch::~CostWatch()
{
	watched = nullptr;
	setTimer(0);
}

// Qt and fontconfig open files by these; definitions of the executable win over the C library's.
#define KESTRUNE_WINS extern "C" [[gnu::visibility("default")]]

KESTRUNE_WINS int open(const char *path, int flags, ...)
{
	va_list arguments{};
	va_start(arguments, flags);
	const mode_t mode = va_arg(arguments, mode_t);
	va_end(arguments);
	return openAt(AT_FDCWD, path, flags, mode);
}

KESTRUNE_WINS int open64(const char *path, int flags, ...)
{
	va_list arguments{};
	va_start(arguments, flags);
	const mode_t mode = va_arg(arguments, mode_t);
	va_end(arguments);
	return openAt(AT_FDCWD, path, flags, mode);
}

KESTRUNE_WINS int openat(int folder, const char *path, int flags, ...)
{
	va_list arguments{};
	va_start(arguments, flags);
	const mode_t mode = va_arg(arguments, mode_t);
	va_end(arguments);
	return openAt(folder, path, flags, mode);
}

KESTRUNE_WINS int access(const char *path, int mode) noexcept
{
	onOpened(path, O_PATH);
	return static_cast<int>(syscall(SYS_access, path, mode));
}

KESTRUNE_WINS int statx(int folder, const char *path, int flags, unsigned int mask, struct statx *answer) noexcept
{
	onOpened(path, O_PATH);
	return static_cast<int>(syscall(SYS_statx, folder, path, flags, mask, answer));
}
