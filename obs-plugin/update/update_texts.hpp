#pragma once

#include <QString>

// The update button's texts. Those of a failure end in the invitation to click again.

QString availableText(const QString &version);
QString downloadingText(const QString &version, int percent);
QString installingText(const QString &version);
QString installedText(const QString &version);

QString noNewerVersionText();
/// The helper's own report of a failed download.
QString downloadFailedText(const QString &helperError);
QString downloadHelperMissingText();
QString downloadHelperStoppedText(int exitCode);

/// `error` is the system's error code; declining the elevation prompt is one of them.
QString installerStartFailedText(quint32 error);
QString updateRunnerStartFailedText();
QString installerTimedOutText();
QString installerFailedText(int exitCode);
/// The installer succeeded by its own account, but `installedVersion` (may be empty) is what is there.
QString stillInstalledText(const QString &installedVersion);
