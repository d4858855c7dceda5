#include <QDir>
#include <QJsonDocument>

#include "sandbox.hpp"

#include <filesystem>
#include <system_error>

using namespace Qt::StringLiterals;

namespace {
constexpr int runTimeout_ms = 120000;
} // namespace

QString sampleHelper()
{
	return u"" SAMPLE_HELPER ""_s;
}

QString fakeUpdateRunner()
{
	return u"" UPDATE_RUNNER ""_s;
}

QString fakeHelper()
{
	return u"" FAKE_HELPER ""_s;
}

Sandbox::Sandbox()
{
	for (const QString &name : environment_.keys()) {
		if (name.startsWith(u"KESTRUNE_"_s)) {
			environment_.remove(name);
		}
	}
	setVariable(u"KESTRUNE_SAMPLE_HELPER_HOME"_s, folder_.path());
	// Tests must not depend on the graphics card.
	setVariable(u"KESTRUNE_SAMPLE_HELPER_ENCODER"_s, u"libx264"_s);
	setVariable(u"KESTRUNE_SAMPLE_HELPER_LINK_MS"_s, u"0"_s);
	setVariable(u"KESTRUNE_SAMPLE_HELPER_CONSENT_MS"_s, u"0"_s);
	setVariable(u"KESTRUNE_SAMPLE_HELPER_DOWNLOAD_MS"_s, u"0"_s);
}

QStringList Sandbox::shortsFolderContent() const
{
	return QDir(shortsFolder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

QString Sandbox::writeFile(const QString &name, const QByteArray &content) const
{
	QDir(path()).mkpath(QFileInfo(path(name)).path());
	QFile file(path(name));
	const bool written = file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
	return written ? file.fileName() : QString();
}

bool Sandbox::age(const QString &name, std::chrono::seconds seconds) const
{
	std::error_code error{};
	std::filesystem::last_write_time(QFileInfo(path(name)).filesystemFilePath(),
					 std::filesystem::file_time_type::clock::now() - seconds, error);
	return !error;
}

QString Sandbox::writeScript(const QString &name, const QByteArray &script) const
{
	const QString file = writeFile(name, "#!/bin/sh\n" + script + "\n");
	QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
	return file;
}

QByteArray Sandbox::readFile(const QString &name) const
{
	QFile file(path(name));
	return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Sandbox::useTool(const QString &name, const QByteArray &script)
{
	writeScript(u"tools/"_s + name, script);
	setVariable(u"KESTRUNE_SAMPLE_HELPER_FFMPEG"_s, path(u"tools"_s));
}

Run Sandbox::run(const QStringList &arguments) const
{
	return runProgram(sampleHelper(), arguments);
}

std::unique_ptr<QProcess> Sandbox::start(const QStringList &arguments) const
{
	return startProgram(sampleHelper(), arguments);
}

Run Sandbox::runProgram(const QString &program, const QStringList &arguments) const
{
	const std::unique_ptr<QProcess> process = startProgram(program, arguments);
	return finish(*process);
}

std::unique_ptr<QProcess> Sandbox::startProgram(const QString &program, const QStringList &arguments) const
{
	auto process = std::make_unique<QProcess>();
	process->setProcessEnvironment(environment_);
	process->start(program, arguments);
	return process;
}

Run finish(QProcess &process)
{
	const bool ended = process.waitForFinished(runTimeout_ms) || process.state() == QProcess::NotRunning;
	Run run{ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
		process.readAllStandardOutput(),
		process.readAllStandardError(),
		{}};
	// As in the dock, a line without a newline is not read.
	const QList<QByteArray> lines = run.output.left(run.output.lastIndexOf('\n') + 1).split('\n');
	for (const QByteArray &line : lines) {
		const QJsonDocument document = QJsonDocument::fromJson(line.trimmed());
		if (document.isObject()) {
			run.events += document.object();
		}
	}
	return run;
}
