#pragma once

#include <QObject>

class HelperRunner;
class Installer;
class QJsonObject;
class UpdateButton;

/// Looks for updates and downloads them, both through the helper, and hands what is downloaded to the installer.
class Updater : public QObject {
public:
	Updater(HelperRunner &helper, UpdateButton &button, Installer &installer);

	/// Asks the helper whether there is a newer version, unless there is no helper or an update is under way.
	void checkUpdate();
	/// Downloads and installs the version that was offered, unless that is under way or done.
	void installUpdate();

private:
	void onCheckEvent(const QJsonObject &event);
	/// `settled` is set by the event that decides the download.
	void onDownloadEvent(const QJsonObject &event, bool &settled);
	void onDownloadFinished(int exitCode, bool settled);

	HelperRunner &helper_;
	UpdateButton &button_;
	Installer &installer_;
};
