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
	return u"%1"_s.arg(QRandomGenerator::system()->generate(), 8, 16, QChar(u'0'));
}

bool isOrHolds(const QString &path, const QString &canonicalReplay)
{
	const QString leftover = QFileInfo(path).canonicalFilePath();
	return !leftover.isEmpty() && (canonicalReplay == leftover || canonicalReplay.startsWith(leftover + u'/'));
}

/// The half-made Short named in a lock file; empty if there is none.
QString shortNamedBy(const QByteArray &content)
{
	static const QRegularExpression shortName(uR"(^short-[0-9]{8}-[0-9]{6}-[0-9a-f]{8}\.part$)"_s);
	const QString path = QString::fromUtf8(content.sliced(lockMark.size()));
	return shortName.match(QFileInfo(path).fileName()).hasMatch() ? path : QString();
}

/// Removes the files of a run. The lock file goes last and only if all others are gone, so that later runs find them.
void removeAll(const QString &part, const QString &folder, QFile &lock)
{
	// A link leads to files that aren't this program's.
	const bool isFolder = QFileInfo(folder).isDir() && !QFileInfo(folder).isSymLink();
	const bool partIsGone = part.isEmpty() || !QFileInfo::exists(part) || QFile::remove(part);
	const bool folderIsGone = !isFolder || QDir(folder).removeRecursively();
	if (partIsGone && folderIsGone) {
		lock.remove();
	}
}

/// Removes the files of a run unless it is alive.
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
	const QByteArray content = lock.read(files::maxSmallFile_bytes);
	if (!content.startsWith(lockMark)) {
		// The run was killed before it had other files.
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
			qInfo("removing %s, left behind by a killed run", qUtf8Printable(leftover));
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
		// Another run may hold it for a moment, looking for leftovers.
		files::lock(lock_, limit_ms);
		adopt({});
		files::makeFolder(path_);
	} catch (const Failure &) {
		if (lock_.isOpen()) {
			lock_.remove();
		}
		throw;
	}
	// It may hold a transcript. Some file systems have no such permissions.
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
				removeIfAbandoned(parent + u'/' + name, canonicalReplay);
			}
		}
	}
}
