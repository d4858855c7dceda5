#include <QFile>

#include "support/platform.hpp"

#include <windows.h>

#include <io.h>

namespace platform {
namespace {

HANDLE handleOf(const QFile &file)
{
	return reinterpret_cast<HANDLE>(_get_osfhandle(file.handle()));
}

std::error_code errorUnless(bool done)
{
	return done ? std::error_code() : std::error_code(static_cast<int>(GetLastError()), std::system_category());
}

} // namespace

std::error_code tryLock(QFile &file)
{
	// Windows also keeps others from reading locked bytes, so lock one far beyond the end of the file.
	OVERLAPPED farBehind{};
	farBehind.OffsetHigh = 1;
	const BOOL locked =
		LockFileEx(handleOf(file), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &farBehind);
	if (locked == 0 && GetLastError() == ERROR_LOCK_VIOLATION) {
		return std::make_error_code(std::errc::operation_would_block);
	}
	return errorUnless(locked != 0);
}

std::error_code flushToDisk(QFile &file)
{
	return errorUnless(FlushFileBuffers(handleOf(file)) != 0);
}

QList<int> diskFullErrors()
{
	return {ERROR_DISK_FULL, ERROR_HANDLE_DISK_FULL, ERROR_DISK_QUOTA_EXCEEDED};
}

} // namespace platform
