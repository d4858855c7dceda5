// Preloaded into the sample helper. Makes one of its file system calls fail, or kills it there. KESTRUNE_FAULT, for
// example "full 12 lasting", is the kind of fault ("kill", "full" or "denied"), the number of the call among those that
// this kind can hit, and whether only this call fails ("once") or all later ones too ("lasting"). Writes to standard
// error when the fault strikes.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {
enum class Kind : std::uint8_t { None, Kill, Full, Denied };

/// What a call needs; decides which faults can hit it.
struct Needs {
	bool room{false};
	bool right{false};
};
constexpr Needs roomAndRight{true, true};
constexpr Needs onlyRoom{true, false};
constexpr Needs onlyRight{false, true};

Kind kind = Kind::None;
long strikesAt = 0;
bool lasts = false;
std::atomic<long> passed = 0;

__attribute__((constructor)) void readPlan()
{
	// Leave the programs that the helper starts alone.
	unsetenv("LD_PRELOAD");
	const char *plan = std::getenv("KESTRUNE_FAULT");
	char name[16]{};
	char duration[16]{};
	if (plan == nullptr || std::sscanf(plan, "%15s %ld %15s", name, &strikesAt, duration) != 3) {
		return;
	}
	lasts = std::strcmp(duration, "lasting") == 0;
	kind = std::strcmp(name, "kill") == 0     ? Kind::Kill
	       : std::strcmp(name, "full") == 0   ? Kind::Full
	       : std::strcmp(name, "denied") == 0 ? Kind::Denied
						  : Kind::None;
}

/// The function that this library replaces.
template<typename Function> Function *original(Function *, const char *name)
{
	return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}
#define ORIGINAL(name) original(&(name), #name)

void tell(const char *call, const char *path)
{
	char text[4200];
	const int length = std::snprintf(text, sizeof text, "fault: %s %.4096s\n", call, path);
	if (ORIGINAL(write)(STDERR_FILENO, text, static_cast<size_t>(length)) < 0) {
		std::abort();
	}
}

/// Whether this call is to fail; sets errno. Kills the process if that is the plan.
bool strikes(Needs needs, const char *call, const char *path)
{
	if (kind == Kind::None || (kind == Kind::Full && !needs.room) || (kind == Kind::Denied && !needs.right)) {
		return false;
	}
	const long number = ++passed;
	if (number < strikesAt || (number > strikesAt && !lasts)) {
		return false;
	}
	tell(call, path);
	if (kind == Kind::Kill) {
		kill(getpid(), SIGKILL);
	}
	errno = kind == Kind::Full ? ENOSPC : EACCES;
	return true;
}

Needs needsOfOpen(int flags)
{
	const bool changes = (flags & (O_CREAT | O_TRUNC)) != 0 || (flags & O_ACCMODE) != O_RDONLY;
	// A folder closed to writers can still be read.
	return {(flags & O_CREAT) != 0, changes || !lasts};
}

bool isFile(int descriptor)
{
	struct stat status{};
	return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}
} // namespace

#define EXPORTED extern "C" __attribute__((visibility("default")))

#define OPEN(name) \
	EXPORTED int name(const char *path, int flags, ...) \
	{ \
		va_list rest; \
		va_start(rest, flags); \
		const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0; \
		va_end(rest); \
		return strikes(needsOfOpen(flags), #name, path) ? -1 : ORIGINAL(name)(path, flags, mode); \
	}
OPEN(open)
OPEN(open64)

EXPORTED ssize_t write(int descriptor, const void *bytes, size_t count)
{
	const auto real = ORIGINAL(write);
	if (!isFile(descriptor) || !strikes(onlyRoom, "write", "")) {
		return real(descriptor, bytes, count);
	}
	// A disk that fills up first writes a part.
	if (lasts && passed == strikesAt && count > 1) {
		return real(descriptor, bytes, count / 2);
	}
	return -1;
}

EXPORTED int fsync(int descriptor)
{
	return strikes(onlyRoom, "fsync", "") ? -1 : ORIGINAL(fsync)(descriptor);
}

EXPORTED int rename(const char *from, const char *to) noexcept
{
	return strikes(roomAndRight, "rename", to) ? -1 : ORIGINAL(rename)(from, to);
}

EXPORTED int unlink(const char *path) noexcept
{
	return strikes(onlyRight, "unlink", path) ? -1 : ORIGINAL(unlink)(path);
}

EXPORTED int mkdir(const char *path, mode_t mode) noexcept
{
	return strikes(roomAndRight, "mkdir", path) ? -1 : ORIGINAL(mkdir)(path, mode);
}

EXPORTED int rmdir(const char *path) noexcept
{
	return strikes(onlyRight, "rmdir", path) ? -1 : ORIGINAL(rmdir)(path);
}

EXPORTED int chmod(const char *path, mode_t mode) noexcept
{
	return strikes(onlyRight, "chmod", path) ? -1 : ORIGINAL(chmod)(path, mode);
}
