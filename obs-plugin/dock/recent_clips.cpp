#include <QDesktopServices>
#include <QJsonArray>
#include <QListWidget>
#include <QUrl>

#include "dock/kestrune_dock.hpp"
#include "dock/shown_text.hpp"

void KestruneDock::refreshRecent()
{
	runHelper({QStringLiteral("--recent")}, [this](const QJsonObject &event) { showRecent(event); }, {});
}

void KestruneDock::showRecent(const QJsonObject &event)
{
	if (event[u"event"].toString() != u"recent")
		return;

	outputFolder_ = event[u"folder"].toString();
	recentList_->clear();
	const QJsonArray clips = event[u"items"].toArray();
	for (const QJsonValue &clip : clips) {
		const QString path = clip[u"path"].toString();
		auto *item = new QListWidgetItem(shownText(clip[u"name"].toString()));
		item->setData(Qt::UserRole, path);
		item->setToolTip(shownText(path));
		recentList_->addItem(item);
	}

	if (recentList_->count() == 0) {
		auto *placeholder = new QListWidgetItem(QStringLiteral("No clips yet"));
		placeholder->setFlags(Qt::NoItemFlags);
		placeholder->setForeground(QColor(138, 144, 166));
		recentList_->addItem(placeholder);
	}
}

void KestruneDock::openFolder()
{
	if (!outputFolder_.isEmpty())
		QDesktopServices::openUrl(QUrl::fromLocalFile(outputFolder_));
}

void KestruneDock::openClip(const QListWidgetItem *item)
{
	const QString path = item->data(Qt::UserRole).toString();
	if (!path.isEmpty())
		QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}
