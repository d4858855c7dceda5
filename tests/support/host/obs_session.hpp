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

/// The real libobs, from obs_startup to obs_shutdown, with a fresh configuration folder and its log caught.
class ObsSession {
public:
	ObsSession();
	~ObsSession();
	Q_DISABLE_COPY_MOVE(ObsSession)

	/// The lines logged so far, by whomever.
	QList<LogLine> log() const;
	/// The lines logged so far by this module: those that begin with its name.
	QList<LogLine> moduleLog() const;
	/// Folder of this module's own configuration; not created.
	QString configFolder() const;

private:
	QTemporaryDir folder_{};
};
