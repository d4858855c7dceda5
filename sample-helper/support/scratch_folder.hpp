#pragma once

#include <QFile>
#include <QString>

/// A folder "run-01234567" for the files of one run, removed with the object. The run holds a lock on the file
/// "run-01234567.lock" beside it, which tells later runs what to remove if this one is killed (OBS was closed, the
/// power failed).
class ScratchFolder {
public:
	/// Throws Failure.
	explicit ScratchFolder(const QString &parent);
	~ScratchFolder();
	Q_DISABLE_COPY_MOVE(ScratchFolder)

	const QString &path() const { return path_; }
	QString filePath(const QString &name) const { return path_ + u'/' + name; }

	/// Also removes this file in the end, unless it has been renamed by then. Throws Failure.
	void adopt(const QString &halfMadeShort);

private:
	QString path_{};
	QFile lock_{};
	QString adopted_{};
};

/// Returns a new name for a Short, without a suffix. Names sort by time; the end keeps clips of the same second apart.
QString newShortName();

/// Removes the scratch folders and half-made Shorts of killed runs, and logs each. Leaves those of living runs, however
/// long they take or are suspended, all other files with such names, and `replay`.
void removeLeftovers(const QString &replay);
