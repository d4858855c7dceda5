#pragma once

#include <QElapsedTimer>
#include <QObject>

#include <memory>

class ElevatedProcess;
class QTimer;
class UpdateButton;

/// Whether to give up on an installer that still runs after this long.
constexpr bool installerTookTooLong(qint64 elapsed_ms)
{
	constexpr qint64 limit_ms = qint64{15} * 60 * 1000;
	return elapsed_ms > limit_ms;
}

/// Runs a downloaded installer with administrator rights, then checks for the new version.
class Installer : public QObject {
public:
	Installer(QObject *dock, UpdateButton &button);
	~Installer() override;

	/// Runs `installerPath`, or the program in KESTRUNE_UPDATE_RUNNER with that path. The system prompts the user,
	/// and meanwhile the dock may be destroyed.
	void runInstaller(const QString &installerPath);
	/// Checks, without blocking, whether the installer has ended.
	void pollInstaller();
	/// The installer has ended; -1 means that it crashed.
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
