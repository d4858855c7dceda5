#include <QDesktopServices>
#include <QJsonArray>
#include <QListWidget>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include "dock/dock_section.hpp"
#include "dock/kestrune_dock.hpp"
#include "dock/shown_text.hpp"

void KestruneDock::buildRecentSection(QVBoxLayout *content)
{
	QVBoxLayout *column = sectionColumn(addSection(content, QStringLiteral("Recent clips && output folder"),
						       QStringLiteral("recentSection"), this));

	recentList_ = new QListWidget(column->parentWidget());
	recentList_->setMinimumHeight(60);
	recentList_->setMaximumHeight(120);
	// Of a thousand clips, the layout at once would hold up the user interface for longer than a frame takes.
	recentList_->setLayoutMode(QListView::Batched);
	column->addWidget(recentList_);
	openFolderButton_ = new QPushButton(QStringLiteral("Open output folder"));
	column->addWidget(openFolderButton_);
}

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
	for (const QJsonValue clip : clips) {
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
