#pragma once

#include <QObject>

class HelperRunner;
class QBoxLayout;
class QJsonObject;
class QListWidget;
class QListWidgetItem;

/// The section "Recent clips & output folder": the Shorts that the helper made last, and where they are.
class RecentSection : public QObject {
public:
	RecentSection(QBoxLayout *content, QObject *dock, HelperRunner &helper);

	/// Asks the helper for the list.
	void refreshRecent();
	/// Opens the output folder with the desktop's file manager; nothing happens before the helper has named it.
	void openFolder() const;

private:
	void showRecent(const QJsonObject &event);
	void openCurrentClip() const;
	static void openClip(const QListWidgetItem *item);

	HelperRunner &helper_;
	QListWidget *list_{nullptr};
	QString outputFolder_{};
};
