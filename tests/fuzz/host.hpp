#pragma once

#include <QByteArray>
#include <QMainWindow>
#include <QString>

#include <cstddef>
#include <cstdint>

class FakeRunner;
class KestruneDock;

// What the fuzz targets share. Each target is one file with an LLVMFuzzerTestOneInput; libFuzzer calls it, or
// replay.cpp with the files of the target's corpus.

/// Starts Qt's widgets and libobs with the clip hotkey, at the first call; starting them for each input would leave no
/// time for the inputs.
void startHost();

/// Ends both, if they were started.
void stopHost();

/// The folder that OBS would give the module for its configuration; it exists.
QString configFolder();

/// Writes a file of these bytes.
void writeFile(const QString &path, const QByteArray &bytes);

/// The bytes of a file; null when there is none.
QByteArray readFile(const QString &path);

/// The input as bytes of its own.
QByteArray toBytes(const uint8_t *data, size_t size);

/// Takes the bytes before the next newline, and the newline, off `rest`.
QByteArray takeLine(QByteArray &rest);

/// Ends the process, and with it the run of the fuzzer, unless `holds`.
void require(bool holds, const char *what);

/// A dock in a visible main window, every section open, so that whatever it shows is laid out and painted.
class ShownDock {
public:
	ShownDock();
	~ShownDock();
	Q_DISABLE_COPY_MOVE(ShownDock)

	KestruneDock *operator->() const { return dock_; }
	/// The dock's helper runs.
	FakeRunner &helper() const { return *helper_; }
	/// Calls a slot by name.
	void invoke(const char *slot) const;

private:
	QMainWindow window_{};
	FakeRunner *helper_{nullptr};
	KestruneDock *dock_{nullptr};
};
