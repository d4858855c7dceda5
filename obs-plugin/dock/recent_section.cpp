#include <QDesktopServices>
#include <QJsonArray>
#include <QJsonObject>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QUrl>
#include <QVBoxLayout>

#include "dock/dock_section.hpp"
#include "dock/recent_section.hpp"
#include "dock/shown_text.hpp"
#include "helper/helper_runner.hpp"

using namespace Qt::StringLiterals;

namespace {
// Years of clips; a list of a million would hold up OBS for seconds.
constexpr int maxClips = 10'000;
} // namespace

RecentSection::RecentSection(QBoxLayout *content, QObject *dock, HelperRunner &helper)
	: helper_(helper)
	, list_(new QListWidget)
{
	QVBoxLayout *column =
		sectionColumn(addSection(content, u"Recent clips && output folder"_s, u"recentSection"_s, dock));

	list_->setMinimumHeight(60);
	list_->setMaximumHeight(120);
	// Else Qt measures each of thousands of names.
	list_->setUniformItemSizes(true);
	list_->setAccessibleName(u"Recent clips"_s);
	column->addWidget(list_);
	auto *openFolderButton = new QPushButton(u"Open output folder"_s);
	column->addWidget(openFolderButton);

	connect(openFolderButton, &QPushButton::clicked, this, &RecentSection::openFolder);
	connect(list_, &QListWidget::itemDoubleClicked, this, &RecentSection::openClip);
	// Not itemActivated: a double click emits that as well and would open the clip twice.
	for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
		auto *open = new QShortcut(key, list_);
		open->setContext(Qt::WidgetShortcut);
		open->setAutoRepeat(false);
		connect(open, &QShortcut::activated, this, &RecentSection::openCurrentClip);
	}
}

void RecentSection::refreshRecent()
{
	helper_.ask({u"--recent"_s}, u"recent"_s, [this](const QJsonObject &recent) { showRecent(recent); });
}

void RecentSection::showRecent(const QJsonObject &recent)
{
	outputFolder_ = recent[u"folder"].toString();
	list_->clear();
	const QJsonArray clips = recent[u"items"].toArray();
	for (const QJsonValue clip : clips) {
		if (list_->count() == maxClips) {
			break;
		}
		const QString path = clip[u"path"].toString();
		auto *item = new QListWidgetItem(shownText(clip[u"name"].toString()));
		item->setData(Qt::UserRole, path);
		item->setToolTip(shownToolTip(path));
		list_->addItem(item);
	}

	if (list_->count() == 0) {
		auto *placeholder = new QListWidgetItem(u"No clips yet"_s);
		placeholder->setFlags(Qt::NoItemFlags);
		placeholder->setForeground(QColor(138, 144, 166));
		list_->addItem(placeholder);
	}
}

void RecentSection::openFolder() const
{
	if (!outputFolder_.isEmpty()) {
		QDesktopServices::openUrl(QUrl::fromLocalFile(outputFolder_));
	}
}

void RecentSection::openCurrentClip() const
{
	if (const QListWidgetItem *item = list_->currentItem()) {
		openClip(item);
	}
}

void RecentSection::openClip(const QListWidgetItem *item)
{
	const QString path = item->data(Qt::UserRole).toString();
	if (!path.isEmpty()) {
		QDesktopServices::openUrl(QUrl::fromLocalFile(path));
	}
}
