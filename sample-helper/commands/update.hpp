#pragma once

class QCommandLineParser;

/// --check-update: sends "update" and says whether the release folder offers another version. Throws Failure when the
/// offer there cannot be understood.
int runCheckUpdate(const QCommandLineParser &);

/// --download-update: copies the offered installer, with "progress" events, and sends "downloaded"; sends "update" with
/// "update" false when nothing is offered. Throws Failure.
int runDownloadUpdate(const QCommandLineParser &);
