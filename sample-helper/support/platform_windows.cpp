#include <QDir>
#include <QFile>

#include "support/platform.hpp"

#include <windows.h>

#include <io.h>

#include <vector>

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

// Files may have longer paths, working folders not. The old short names (PROGRA~1) help where the drive has them.
QString asWorkingFolder(const QString &folder)
{
	if (folder.size() < MAX_PATH - 2) {
		return folder;
	}
	const QString longPaths = QString::fromLatin1(R"(\\?\)");
	const std::wstring path = (longPaths + QDir::toNativeSeparators(folder)).toStdWString();
	std::vector<wchar_t> name(path.size() + 1);
	const DWORD length = GetShortPathNameW(path.c_str(), name.data(), static_cast<DWORD>(name.size()));
	if (length == 0 || length >= name.size()) {
		return folder;
	}
	return QString::fromWCharArray(name.data(), static_cast<qsizetype>(length)).sliced(longPaths.size());
}
} // namespace platform
