#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "support/environment.hpp"
#include "support/leftovers.hpp"

using namespace Qt::StringLiterals;

namespace {

// A Short that is still being made is written to all the time.
constexpr qint64 partLifetime_s = 600;
// A scratch folder lies still for as long as the run takes.
constexpr qint64 scratchLifetime_s = 86400;

/// The entries of a folder that have not changed for so long and neither are nor hold the replay.
QFileInfoList abandoned(const QDir &folder, const QString &pattern, QDir::Filters kind, qint64 age_s,
			const QString &replay)
{
	const QString kept = QFileInfo(replay).canonicalFilePath();
	const QDateTime now = QDateTime::currentDateTimeUtc();
	QFileInfoList entries = folder.entryInfoList({pattern}, kind | QDir::NoDotAndDotDot);
	entries.removeIf([&](const QFileInfo &entry) {
		const QString path = entry.canonicalFilePath();
		return path == kept || kept.startsWith(path + QLatin1Char('/')) ||
		       entry.lastModified().secsTo(now) <= age_s;
	});
	return entries;
}

} // namespace

void removeLeftovers(const QString &replay)
{
	for (const QFileInfo &part :
	     abandoned(QDir(environment::outputFolder()), u"short-*.part"_s, QDir::Files, partLifetime_s, replay)) {
		QFile::remove(part.absoluteFilePath());
	}
	for (const QString &folder : {environment::stateFolder(), environment::stateFolder() + u"/previews"_s}) {
		for (const QFileInfo &scratch :
		     abandoned(QDir(folder), u"run-*"_s, QDir::Dirs | QDir::NoSymLinks, scratchLifetime_s, replay)) {
			QDir(scratch.absoluteFilePath()).removeRecursively();
		}
	}
}
