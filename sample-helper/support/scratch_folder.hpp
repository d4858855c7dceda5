#pragma once

#include <QFile>
#include <QString>

/// A folder for the files of one run, "run-" and eight digits, gone with the object. The file of the same name with
/// ".lock" behind it is locked as long as the run lives, and tells other runs what it left behind if it was killed (OBS
/// was closed, the power failed).
class ScratchFolder {
public:
	/// Throws Failure.
	explicit ScratchFolder(const QString &parent);
	~ScratchFolder();
	Q_DISABLE_COPY_MOVE(ScratchFolder)

	const QString &path() const { return path_; }
	QString filePath(const QString &name) const { return path_ + QLatin1Char('/') + name; }

	/// A file elsewhere that goes with the folder, unless it has got another name by then. Throws Failure.
	void adopt(const QString &halfMadeShort);

private:
	QString path_{};
	QFile lock_{};
	QString adopted_{};
};

/// A name for a Short, without a suffix: it sorts by time, and its end keeps apart clips of the same second.
QString newShortName();

/// Removes the scratch folders in the state folder and the half-made Shorts of runs that were killed, and logs each. No
/// run that is alive loses anything, however long it takes or is suspended; nothing else that bears such a name is
/// touched, and never `replay` itself.
void removeLeftovers(const QString &replay);
