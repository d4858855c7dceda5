#pragma once

#include <QObject>

class HelperRunner;
class Installer;
class QJsonObject;
class UpdateButton;

/// Checks for updates and downloads them through the helper, then runs the installer.
class Updater : public QObject {
public:
	Updater(HelperRunner &helper, UpdateButton &button, Installer &installer);

	/// Checks for a newer version, unless the helper is missing or an update is under way.
	void checkUpdate();
	/// Downloads and installs the offered version, unless that is under way or done.
	void installUpdate();

private:
	/// Sets `settled` if the event ends the download, well or badly.
	void onDownloadEvent(const QJsonObject &event, bool &settled);
	void onDownloadFinished(int exitCode, bool settled);

	HelperRunner &helper_;
	UpdateButton &button_;
	Installer &installer_;
};
