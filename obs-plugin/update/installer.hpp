#pragma once

#include <QElapsedTimer>
#include <QObject>

#include <memory>

class ElevatedProcess;
class QTimer;
class UpdateButton;

/// Whether an installer that still runs after this long is given up.
constexpr bool installerTookTooLong(qint64 elapsed_ms)
{
	constexpr qint64 limit_ms = qint64{15} * 60 * 1000;
	return elapsed_ms > limit_ms;
}

/// Runs a downloaded installer with administrator rights, and looks afterwards whether the new version is there.
class Installer : public QObject {
public:
	Installer(QObject *dock, UpdateButton &button);
	~Installer() override;

	/// Runs the installer at `installerPath`, or the program that KESTRUNE_UPDATE_RUNNER names with that path. The
	/// system asks the user first, and there anything can happen, even the end of the dock.
	void runInstaller(const QString &installerPath);
	/// Looks, without waiting, whether the installer has ended.
	void pollInstaller();
	/// The installer has ended; -1 is a crash.
	void installerFinished(int exitCode);

private:
	void startElevatedInstaller(const QString &installerPath);
	void startUpdateRunner(const QString &runner, const QString &installerPath);

	QObject *dock_{nullptr};
	UpdateButton &button_;
	QTimer *timer_{nullptr};
	std::unique_ptr<ElevatedProcess> process_{};
	QElapsedTimer started_{};
};
