#include "update/update_texts.hpp"

namespace {
QString retry(const QString &failure)
{
	return failure + QStringLiteral(" Retry update");
}
} // namespace

QString availableText(const QString &version)
{
	return QStringLiteral("Update available v%1 — Update now").arg(version);
}

QString downloadingText(const QString &version, int percent)
{
	return QStringLiteral("Downloading v%1… %2%").arg(version, QString::number(percent));
}

QString installingText(const QString &version)
{
	return QStringLiteral("Installing v%1… (approve the Windows prompt)").arg(version);
}

QString installedText(const QString &version)
{
	return QStringLiteral("Update installed (v%1). Restart OBS to finish.").arg(version);
}

QString noNewerVersionText()
{
	return retry(QStringLiteral("No newer version is available any more."));
}

QString downloadFailedText(const QString &helperError)
{
	return retry(helperError.startsWith(u"Update") ? helperError : QStringLiteral("Update failed: ") + helperError);
}

QString downloadHelperMissingText()
{
	return retry(QStringLiteral("Update failed: the Kestrune helper is missing."));
}

QString downloadHelperStoppedText(int exitCode)
{
	return retry(QStringLiteral("Update failed: the helper stopped (code %1).").arg(exitCode));
}

QString installerStartFailedText(quint32 error)
{
	constexpr quint32 promptDeclined = 1223; // ERROR_CANCELLED
	if (error == promptDeclined) {
		return retry(QStringLiteral("Update cancelled: the Windows admin prompt was declined."));
	}
	return retry(QStringLiteral("Update failed: couldn't start the installer (error %1).").arg(error));
}

QString updateRunnerStartFailedText()
{
	return retry(QStringLiteral("Update failed: couldn't start the installer."));
}

QString installerTimedOutText()
{
	return retry(QStringLiteral("Update failed: the installer didn't finish within 15 minutes."));
}

QString installerFailedText(int exitCode)
{
	return retry(
		QStringLiteral("Update failed: the installer exited with code %1. Nothing changed until it succeeds.")
			.arg(exitCode));
}

QString stillInstalledText(const QString &installedVersion)
{
	return retry(QStringLiteral("Update failed: the installer finished but v%1 is still installed.")
			     .arg(installedVersion));
}
