#pragma once

#include <QObject>

class HelperRunner;
class QBoxLayout;
class QJsonObject;
class QListWidget;
class QListWidgetItem;

/// The section "Recent clips & output folder": the latest Shorts and their folder.
class RecentSection : public QObject {
public:
	RecentSection(QBoxLayout *content, QObject *dock, HelperRunner &helper);

	void refreshRecent();
	/// Opens the output folder in the file manager; does nothing until the helper has named it.
	void openFolder() const;

private:
	void showRecent(const QJsonObject &recent);
	void openCurrentClip() const;
	static void openClip(const QListWidgetItem *item);

	HelperRunner &helper_;
	QListWidget *list_{nullptr};
	QString outputFolder_{};
};
