#pragma once

#include <QMainWindow>
#include <QString>

#include "input.hpp"

class FakeRunner;
class KestruneDock;
class QWidget;

// What the targets of obs-plugin/ share.

/// Starts Qt's widgets and libobs with the clip hotkey, at the first call; starting them for each input would leave no
/// time for the inputs.
void startHost();

/// The folder that OBS would give the module for its configuration; it exists.
QString configFolder();

/// Whether a file is a font, one of the module's configuration, or random: what any input may have opened.
bool isOwnFile(const char *path, int flags);

/// A dock in a main window, every section open. It is made once: making it takes as long as a hundred inputs.
class FuzzDock {
public:
	/// The process's one dock, as reset() leaves it; the window becomes visible if wanted. Then whatever the dock
	/// shows is laid out, which takes ten times as long as all the rest.
	static FuzzDock &fresh(bool visible);
	Q_DISABLE_COPY_MOVE(FuzzDock)

	KestruneDock *operator->() const { return dock_; }
	/// The dock's helper runs.
	FakeRunner &helper() const { return *helper_; }
	/// Calls a slot by name.
	void invoke(const char *slot) const;
	/// Has the helper answer the newest run of `command`, which `slot` starts if none is in flight, and ends it if
	/// wanted. Nothing happens when the dock starts no such run now.
	void answer(const char *command, const char *slot, const QByteArray &output, bool ends) const;
	/// Delivers what is queued, and lays out what has changed. Timers do not run out meanwhile: they would depend
	/// on how fast the inputs come.
	static void settle();
	/// Whether the main window, or what is in the dock, has to be wider than at first.
	bool isWidened() const;

private:
	FuzzDock();
	~FuzzDock();
	void show();
	void reset();
	int neededWidth_px() const;

	friend void stopHost();
	static FuzzDock *made_;

	QMainWindow window_{};
	FakeRunner *helper_{nullptr};
	KestruneDock *dock_{nullptr};
	int width_px_{0};
};
