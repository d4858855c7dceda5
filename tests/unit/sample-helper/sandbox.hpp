#pragma once

#include <QJsonObject>
#include <QList>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <chrono>
#include <memory>

using namespace Qt::StringLiterals;

/// Path of the sample helper.
QString sampleHelper();
/// Path of the program that stands in for the elevated installer.
QString updateRunner();

/// Path of the program that the dock's tests run as their helper: it does what a script says.
QString fakeHelper();

/// What one run of the helper left behind.
struct Run {
	/// -1 after a crash or when it did not end in time.
	int exitCode{};
	QByteArray output{};
	QByteArray errorOutput{};
	QList<QJsonObject> events{};

	/// The only event of the run; an empty object when there were none or several.
	QJsonObject onlyEvent() const { return events.size() == 1 ? events.first() : QJsonObject(); }
};

/// A state folder of its own, gone with the object, and runs of the helper in it.
class Sandbox {
public:
	Sandbox();

	QString path(const QString &name = {}) const { return folder_.filePath(name); }
	QString shortsFolder() const { return path(u"Shorts"_s); }
	/// The files in the Shorts folder, whatever their kind.
	QStringList shortsFolderContent() const;

	void setVariable(const QString &name, const QString &value) { environment_.insert(name, value); }
	QString writeFile(const QString &name, const QByteArray &content) const;
	/// Empty if there is none.
	QByteArray readFile(const QString &name) const;
	/// Makes a file or folder look as if it had not changed for so long; false on failure.
	bool age(const QString &name, std::chrono::seconds seconds) const;
	/// Makes an executable shell script.
	QString writeScript(const QString &name, const QByteArray &script) const;
	/// Makes an executable shell script in the folder "tools", which the helper then takes ffmpeg from.
	void useTool(const QString &name, const QByteArray &script);

	Run run(const QStringList &arguments) const;
	/// Starts the helper and returns at once.
	std::unique_ptr<QProcess> start(const QStringList &arguments) const;
	/// Starts another program with the sandbox's environment and waits for its end.
	Run runProgram(const QString &program, const QStringList &arguments) const;

private:
	std::unique_ptr<QProcess> startProgram(const QString &program, const QStringList &arguments) const;

	QTemporaryDir folder_{};
	QProcessEnvironment environment_{QProcessEnvironment::systemEnvironment()};
};

/// Waits for the end of a run that Sandbox::start() began.
Run finish(QProcess &process);
