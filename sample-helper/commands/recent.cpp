#include "commands/recent.hpp"

#include "support/environment.hpp"
#include "support/events.hpp"

#include <QDir>
#include <QJsonArray>

#include <algorithm>

int runRecent(const QCommandLineParser &)
{
	constexpr int mostItems = 10;
	const QDir folder(environment::outputFolder());
	// So that "Open output folder" has something to open before the first clip.
	folder.mkpath(QStringLiteral("."));
	// Short names carry their time, so the name settles what the file system's clock cannot tell apart.
	QFileInfoList files = folder.entryInfoList({QStringLiteral("*.mp4")}, QDir::Files, QDir::Name | QDir::Reversed);
	std::stable_sort(files.begin(), files.end(), [](const QFileInfo &left, const QFileInfo &right) {
		return left.lastModified() > right.lastModified();
	});
	QJsonArray items{};
	for (const QFileInfo &file : files.mid(0, mostItems)) {
		items += QJsonObject{{QStringLiteral("name"), file.fileName()},
				     {QStringLiteral("path"), file.absoluteFilePath()}};
	}
	sendEvent(QStringLiteral("recent"),
		  {{QStringLiteral("folder"), folder.absolutePath()}, {QStringLiteral("items"), items}});
	return 0;
}
