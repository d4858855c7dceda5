#pragma once

#include <QList>
#include <QString>
#include <QTemporaryDir>

#include <obs.h>

struct LogLine {
	int level{0};
	QString text{};

	bool operator==(const LogLine &) const = default;
};

/// The real libobs, from obs_startup to obs_shutdown, with a fresh configuration folder and a captured log.
class ObsSession {
public:
	ObsSession();
	~ObsSession();
	Q_DISABLE_COPY_MOVE(ObsSession)

	QList<LogLine> log() const;
	/// The log lines that begin with the module's name.
	QList<LogLine> moduleLog() const;
	/// The module's configuration folder, which may not exist.
	QString configFolder() const;

private:
	QTemporaryDir folder_{};
};
