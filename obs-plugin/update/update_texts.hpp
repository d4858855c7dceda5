#pragma once

#include <QString>

// Texts of the update button. Failures invite the user to click again.

QString availableText(const QString &version);
QString downloadingText(const QString &version, int percent);
QString installingText(const QString &version);
QString installedText(const QString &version);

QString noNewerVersionText();
/// The helper reported a failed download.
QString downloadFailedText(const QString &helperError);
QString downloadHelperMissingText();
QString downloadHelperStoppedText(int exitCode);

/// `error` is the system's code; there is one for a declined prompt.
QString installerStartFailedText(quint32 error);
QString updateRunnerStartFailedText();
QString installerTimedOutText();
QString installerFailedText(int exitCode);
/// The installer reported success, but `installedVersion` (may be empty) is still there.
QString stillInstalledText(const QString &installedVersion);
