#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>

#include "support/environment.hpp"
#include "support/events.hpp"
#include "support/files.hpp"
#include "support/scratch_folder.hpp"

using namespace Qt::StringLiterals;

namespace {

// The first line of a lock file; the second one is the path of the half-made Short.
constexpr QByteArrayView lockMark("scratch folder of kestrune-sample-helper\n");
constexpr QLatin1StringView lockSuffix(".lock");

QString eightDigits()
{
	return u"%1"_s.arg(QRandomGenerator::system()->generate(), 8, 16, QLatin1Char('0'));
}

bool isOrHolds(const QString &path, const QString &canonicalReplay)
{
	const QString leftover = QFileInfo(path).canonicalFilePath();
	return !leftover.isEmpty() &&
	       (canonicalReplay == leftover || canonicalReplay.startsWith(leftover + QLatin1Char('/')));
}

/// The half-made Short that a lock file names; empty when it names none.
QString shortNamedBy(const QByteArray &content)
{
	static const QRegularExpression shortName(uR"(^short-[0-9]{8}-[0-9]{6}-[0-9a-f]{8}\.part$)"_s);
	const QString path = QString::fromUtf8(content.sliced(lockMark.size()));
	return shortName.match(QFileInfo(path).fileName()).hasMatch() ? path : QString();
}

/// Removes the files of a run, the lock file last, so that what cannot be removed now is found again.
void removeAll(const QString &part, const QString &folder, QFile &lock)
{
	// What is behind a link is not this program's.
	const bool isFolder = QFileInfo(folder).isDir() && !QFileInfo(folder).isSymLink();
	const bool partIsGone = part.isEmpty() || !QFileInfo::exists(part) || QFile::remove(part);
	const bool folderIsGone = !isFolder || QDir(folder).removeRecursively();
	if (partIsGone && folderIsGone) {
		lock.remove();
	}
}

/// Removes what belongs to a lock file, unless its run is alive.
void removeIfAbandoned(const QString &lockPath, const QString &canonicalReplay)
{
	QFile lock(lockPath);
	if (!lock.open(QIODevice::ReadWrite | QIODevice::ExistingOnly)) {
		return;
	}
	try {
		files::lock(lock, 0);
	} catch (const Failure &) {
		return; // Its run is alive.
	}
	const QByteArray content = lock.read(files::largestSmallFile_bytes);
	if (!content.startsWith(lockMark)) {
		// Killed before it had anything else.
		if (lockMark.startsWith(content)) {
			lock.remove();
		}
		return;
	}
	const QString part = shortNamedBy(content);
	const QString folder = lockPath.chopped(lockSuffix.size());
	if (isOrHolds(part, canonicalReplay) || isOrHolds(folder, canonicalReplay)) {
		return;
	}
	for (const QString &leftover : {part, folder}) {
		if (QFileInfo::exists(leftover)) {
			qInfo("removing %s, which a run that was killed left behind", qUtf8Printable(leftover));
		}
	}
	removeAll(part, folder, lock);
}

} // namespace

ScratchFolder::ScratchFolder(const QString &parent)
	: path_(parent + u"/run-"_s + eightDigits())
	, lock_(path_ + lockSuffix)
{
	constexpr int limit_ms = 5000;
	files::makeFolder(parent);
	try {
		if (!lock_.open(QIODevice::ReadWrite | QIODevice::NewOnly | QIODevice::Unbuffered)) {
			throw Failure(u"couldn't write to %1: %2."_s.arg(parent, files::cause(lock_.errorString())));
		}
		// Somebody who looks for leftovers may have it for a moment.
		files::lock(lock_, limit_ms);
		adopt({});
		files::makeFolder(path_);
	} catch (const Failure &) {
		if (lock_.isOpen()) {
			lock_.remove();
		}
		throw;
	}
	// It may hold what somebody said. Some disks know no such rights.
	QFile::setPermissions(path_, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

ScratchFolder::~ScratchFolder()
{
	removeAll(adopted_, path_, lock_);
}

void ScratchFolder::adopt(const QString &halfMadeShort)
{
	const QByteArray content = lockMark.toByteArray() + halfMadeShort.toUtf8();
	const QString problem = lock_.seek(0) ? files::writeAll(lock_, content) : lock_.errorString();
	if (!problem.isEmpty()) {
		throw Failure(
			u"couldn't write to %1: %2."_s.arg(QFileInfo(path_).absolutePath(), files::cause(problem)));
	}
	adopted_ = halfMadeShort;
}

QString newShortName()
{
	const QString time = QDateTime::currentDateTime().toString(u"yyyyMMdd-HHmmss"_s);
	return u"short-%1-%2"_s.arg(time, eightDigits());
}

void removeLeftovers(const QString &replay)
{
	static const QRegularExpression lockName(uR"(^run-[0-9a-f]{8}\.lock$)"_s);
	const QString canonicalReplay = QFileInfo(replay).canonicalFilePath();
	for (const QString &parent : {environment::stateFolder(), environment::stateFolder() + u"/previews"_s}) {
		const QStringList locks =
			QDir(parent).entryList({u"run-*.lock"_s}, QDir::Files | QDir::Hidden | QDir::NoSymLinks);
		for (const QString &name : locks) {
			if (lockName.match(name).hasMatch()) {
				removeIfAbandoned(parent + QLatin1Char('/') + name, canonicalReplay);
			}
		}
	}
}
