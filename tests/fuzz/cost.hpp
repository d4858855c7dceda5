#pragma once

#include <QtClassHelperMacros>

#include <cstddef>
#include <functional>

/// What may happen on a thread while it is watched.
struct CostBounds {
	/// Of the processor. Sanitizers and coverage are allowed five times as much.
	int time_ms{100};
	/// By how much memory may grow, at any moment. It is counted under AddressSanitizer alone.
	std::size_t memory_bytes{std::size_t{64} * 1024 * 1024};
	/// Whether a file may be opened with these flags, or looked at (O_PATH). None may when this is empty.
	std::function<bool(const char *path, int flags)> mayOpen{};
};

/// Whether a path has "/font" in it, as those of fonts and of fontconfig's files do: Qt opens a font when the first
/// text needs it.
bool isFontPath(const char *path);

/// Watches what the calling thread, the process's first one, does until the end of the block. When it passes a bound
/// the process ends at once with a line that says which, so that a fuzzer keeps the input: waiting for the end would be
/// no use, as some texts take hours. There is one watch at a time.
class CostWatch {
public:
	explicit CostWatch(const CostBounds &bounds);
	~CostWatch();
	Q_DISABLE_COPY_MOVE(CostWatch)
};
