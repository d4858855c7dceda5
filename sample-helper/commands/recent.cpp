#include <QDateTime>
#include <QDir>
#include <QJsonArray>

#include "commands/recent.hpp"
#include "support/environment.hpp"
#include "support/events.hpp"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
/// When a file was made. A time more than a day ahead comes from a clock that was wrong and counts as the oldest, or
/// such a Short would stay on top for that long. Smaller differences may be another computer's clock.
QDateTime timeOf(const QFileInfo &file, const QDateTime &now)
{
	return file.lastModified() < now.addDays(1) ? file.lastModified() : QDateTime::fromSecsSinceEpoch(0);
}
} // namespace

int runRecent(const QCommandLineParser &)
{
	constexpr int maxItems = 10;
	const QDir folder(environment::outputFolder());
	// So that "Open output folder" has something to open before the first clip.
	folder.mkpath(u"."_s);
	// Short names carry their time, so the name settles what the file system's clock cannot tell apart.
	QFileInfoList files = folder.entryInfoList({u"*.mp4"_s}, QDir::Files, QDir::Name | QDir::Reversed);
	const QDateTime now = QDateTime::currentDateTime();
	std::stable_sort(files.begin(), files.end(), [&now](const QFileInfo &left, const QFileInfo &right) {
		return timeOf(left, now) > timeOf(right, now);
	});
	QJsonArray items{};
	for (const QFileInfo &file : files.mid(0, maxItems)) {
		items += QJsonObject{{u"name"_s, file.fileName()}, {u"path"_s, file.absoluteFilePath()}};
	}
	sendEvent(u"recent"_s, {{u"folder"_s, folder.absolutePath()}, {u"items"_s, items}});
	return 0;
}
