#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include "support/events.hpp"
#include "support/files.hpp"
#include "support/platform.hpp"

#include <algorithm>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace files {
namespace {
Failure failureOf(const QString &deed, const QString &path, const QString &systemText)
{
	const QFileInfo file(path);
	return Failure(
		u"couldn't %1 %2 in %3: %4."_s.arg(deed, file.fileName(), file.absolutePath(), cause(systemText)));
}

Failure failureOf(const QString &deed, const QString &path, const std::error_code &error)
{
	return failureOf(deed, path, qt_error_string(error.value()));
}

/// Writes `target`, down to the disk if `safely`. Failures name `path`.
void writeFile(const QString &target, const QByteArray &content, bool safely, const QString &path)
{
	QFile file(target);
	if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
		throw failureOf(u"save"_s, path, file.errorString());
	}
	const QString problem = writeAll(file, content);
	if (!problem.isEmpty()) {
		file.remove();
		throw failureOf(u"save"_s, path, problem);
	}
	const std::error_code error = safely ? platform::flushToDisk(file) : std::error_code();
	if (error) {
		file.remove();
		throw failureOf(u"save"_s, path, error);
	}
}
} // namespace

void makeFolder(const QString &path)
{
	std::error_code error{};
	std::filesystem::create_directories(QFileInfo(path).filesystemFilePath(), error);
	if (error) {
		throw Failure(u"couldn't make the folder %1: %2."_s.arg(path, cause(qt_error_string(error.value()))));
	}
}

void makePrivateFolder(const QString &path)
{
	makeFolder(path);
	if (!QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)) {
		throw Failure(u"couldn't keep others out of the folder %1."_s.arg(path));
	}
}

QByteArray readSmall(const QString &path)
{
	// Opening a pipe would block until somebody writes to it.
	if (!QFileInfo(path).isFile()) {
		throw failureOf(u"read"_s, path, u"it is no file"_s);
	}
	QFile file(path);
	if (!file.open(QIODevice::ReadOnly)) {
		throw failureOf(u"read"_s, path, file.errorString());
	}
	QByteArray content = file.read(maxSmallFile_bytes + 1);
	if (file.error() != QFileDevice::NoError) {
		throw failureOf(u"read"_s, path, file.errorString());
	}
	return content;
}

QString writeAll(QFileDevice &file, const QByteArray &content)
{
	qint64 done = 0;
	while (done < content.size()) {
		// A disk that fills up first writes a part, and reports the error on the next attempt.
		const qint64 written = file.write(content.constData() + done, content.size() - done);
		if (written <= 0) {
			return file.errorString();
		}
		done += written;
	}
	return {};
}

void write(const QString &path, const QByteArray &content)
{
	writeFile(path, content, false, path);
}

void replace(const QString &path, const QByteArray &content)
{
	const QString fresh = path + u".new"_s;
	writeFile(fresh, content, true, path);
	move(fresh, path);
}

void move(const QString &from, const QString &to)
{
	// QFile::rename() falls back to copying, which could leave half a file.
	std::error_code error{};
	std::filesystem::rename(QFileInfo(from).filesystemFilePath(), QFileInfo(to).filesystemFilePath(), error);
	if (error) {
		throw failureOf(u"save"_s, to, error);
	}
}

void lock(QFile &file, int limit_ms)
{
	const QDeadlineTimer deadline(limit_ms);
	std::error_code error = platform::tryLock(file);
	while (error == std::errc::operation_would_block && !deadline.hasExpired()) {
		constexpr unsigned long pause_ms = 10;
		QThread::msleep(pause_ms);
		error = platform::tryLock(file);
	}
	if (error == std::errc::operation_would_block) {
		throw failureOf(u"lock"_s, file.fileName(), u"another run of the helper holds it"_s);
	}
	if (error) {
		throw failureOf(u"lock"_s, file.fileName(), error);
	}
}

QString cause(const QString &systemText)
{
	const QList<int> full = platform::diskFullErrors();
	if (std::any_of(full.begin(), full.end(), [&](int error) { return systemText == qt_error_string(error); })) {
		return u"the disk is full"_s;
	}
	QString text = systemText.trimmed();
	while (text.endsWith(u'.')) {
		text.chop(1);
	}
	return text;
}
} // namespace files
