#pragma once

#include <QJsonObject>
#include <QList>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include "host/patience.hpp"

#include <chrono>
#include <memory>

using namespace Qt::StringLiterals;

QString sampleHelper();
/// The program that stands in for the elevated installer.
QString fakeUpdateRunner();

/// The program that the dock's tests use as their helper: it follows a script.
QString fakeHelper();

/// The result of one helper run.
struct Run {
	/// -1 after a crash or a timeout.
	int exitCode{0};
	QByteArray output{};
	QByteArray errorOutput{};
	QList<QJsonObject> events{};

	/// The run's only event; empty if there was none or several.
	QJsonObject onlyEvent() const { return events.size() == 1 ? events.first() : QJsonObject(); }
};

/// A temporary state folder, and helper runs in it.
class Sandbox {
public:
	Sandbox();

	QString path(const QString &name = {}) const { return folder_.filePath(name); }
	QString shortsFolder() const { return path(u"Shorts"_s); }
	QStringList shortsFolderContent() const;

	void setVariable(const QString &name, const QString &value) { environment_.insert(name, value); }
	QString writeFile(const QString &name, const QByteArray &content) const;
	/// Empty if there is none.
	QByteArray readFile(const QString &name) const;
	/// Sets the modification time of a file or folder back; false on failure.
	bool age(const QString &name, std::chrono::seconds seconds) const;
	QString writeScript(const QString &name, const QByteArray &script) const;
	/// Makes a shell script in the folder "tools", from which the helper then takes ffmpeg.
	void useTool(const QString &name, const QByteArray &script);

	Run run(const QStringList &arguments) const;
	/// Starts the helper and returns at once.
	std::unique_ptr<QProcess> start(const QStringList &arguments) const;
	/// Runs another program in the sandbox's environment to its end.
	Run runProgram(const QString &program, const QStringList &arguments) const;

private:
	std::unique_ptr<QProcess> startProgram(const QString &program, const QStringList &arguments) const;

	QTemporaryDir folder_{};
	QProcessEnvironment environment_{QProcessEnvironment::systemEnvironment()};
};

/// Waits for the end of a run started with Sandbox::start().
Run finish(QProcess &process);
