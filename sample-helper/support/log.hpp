#pragma once

/// From now on qInfo, qWarning and the like go to standard error and, with time and process id, to
/// "sample-helper.log" in the state folder. A log file over 1 MB is set aside as "sample-helper.log.old" first.
/// Standard output belongs to the events alone.
void startLog();

/// From now on they go to the file alone.
void logToFileOnly();
