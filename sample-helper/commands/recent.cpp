#include <QDir>
#include <QJsonArray>

#include "commands/recent.hpp"
#include "support/environment.hpp"
#include "support/events.hpp"

#include <algorithm>

using namespace Qt::StringLiterals;

int runRecent(const QCommandLineParser &)
{
	constexpr int mostItems = 10;
	const QDir folder(environment::outputFolder());
	// So that "Open output folder" has something to open before the first clip.
	folder.mkpath(u"."_s);
	// Short names carry their time, so the name settles what the file system's clock cannot tell apart.
	QFileInfoList files = folder.entryInfoList({u"*.mp4"_s}, QDir::Files, QDir::Name | QDir::Reversed);
	std::stable_sort(files.begin(), files.end(), [](const QFileInfo &left, const QFileInfo &right) {
		return left.lastModified() > right.lastModified();
	});
	QJsonArray items{};
	for (const QFileInfo &file : files.mid(0, mostItems)) {
		items += QJsonObject{{u"name"_s, file.fileName()}, {u"path"_s, file.absoluteFilePath()}};
	}
	sendEvent(u"recent"_s, {{u"folder"_s, folder.absolutePath()}, {u"items"_s, items}});
	return 0;
}
