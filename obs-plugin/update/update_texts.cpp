#include "update/update_texts.hpp"

using namespace Qt::StringLiterals;

namespace {
QString retry(const QString &failure)
{
	return failure + u" Retry update"_s;
}
} // namespace

QString availableText(const QString &version)
{
	return u"Update available v%1 — Update now"_s.arg(version);
}

QString downloadingText(const QString &version, int percent)
{
	return u"Downloading v%1… %2%"_s.arg(version, QString::number(percent));
}

QString installingText(const QString &version)
{
	return u"Installing v%1… (approve the Windows prompt)"_s.arg(version);
}

QString installedText(const QString &version)
{
	return u"Update installed (v%1). Restart OBS to finish."_s.arg(version);
}

QString noNewerVersionText()
{
	return retry(u"No newer version is available any more."_s);
}

QString downloadFailedText(const QString &helperError)
{
	return retry(helperError.startsWith(u"Update") ? helperError : u"Update failed: "_s + helperError);
}

QString downloadHelperMissingText()
{
	return retry(u"Update failed: the Kestrune helper is missing."_s);
}

QString downloadHelperStoppedText(int exitCode)
{
	return retry(u"Update failed: the helper stopped (code %1)."_s.arg(exitCode));
}

QString installerStartFailedText(quint32 error)
{
	constexpr quint32 promptDeclined = 1223; // ERROR_CANCELLED
	if (error == promptDeclined) {
		return retry(u"Update cancelled: the Windows admin prompt was declined."_s);
	}
	return retry(u"Update failed: couldn't start the installer (error %1)."_s.arg(error));
}

QString updateRunnerStartFailedText()
{
	return retry(u"Update failed: couldn't start the installer."_s);
}

QString installerTimedOutText()
{
	return retry(u"Update failed: the installer didn't finish within 15 minutes."_s);
}

QString installerFailedText(int exitCode)
{
	return retry(u"Update failed: the installer exited with code %1. Nothing changed until it succeeds."_s.arg(
		exitCode));
}

QString stillInstalledText(const QString &installedVersion)
{
	return retry(u"Update failed: the installer finished but v%1 is still installed."_s.arg(installedVersion));
}
