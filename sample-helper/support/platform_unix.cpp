#include <QFile>

#include "support/platform.hpp"

#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace platform {
std::error_code tryLock(QFile &file)
{
	return flock(file.handle(), LOCK_EX | LOCK_NB) == 0 ? std::error_code()
							    : std::error_code(errno, std::system_category());
}

std::error_code flushToDisk(QFile &file)
{
	// Some network file systems can't flush; that doesn't mean the write failed.
	const bool flushed = fsync(file.handle()) == 0 || errno == EINVAL || errno == ENOTSUP;
	return flushed ? std::error_code() : std::error_code(errno, std::system_category());
}

QList<int> diskFullErrors()
{
	return {ENOSPC, EDQUOT, EFBIG};
}

QString asWorkingFolder(const QString &folder)
{
	return folder;
}
} // namespace platform
