#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>
#include <QStandardPaths>

#include "support/environment.hpp"
#include "support/settings.hpp"

using namespace Qt::StringLiterals;

namespace environment {
namespace {
constexpr const char *prefix = "KESTRUNE_SAMPLE_HELPER_";

QString absolute(const QString &path)
{
	return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

/// What the settings file says; nothing when there is none.
settings::Content fileContent()
{
	constexpr qint64 most_bytes = 100'000;
	QFile file(settingsFile());
	// To open a pipe would wait for somebody to write into it.
	const bool isOpen = QFileInfo(file.fileName()).isFile() && file.open(QIODevice::ReadOnly);
	return isOpen ? settings::parse(file.read(most_bytes)) : settings::Content();
}

/// The variable wins over the file. Empty when neither says anything.
QString valueOf(const char *name)
{
	const QString value = qEnvironmentVariable((QByteArray(prefix) + name).constData());
	return value.isEmpty() ? fileContent().values.value(QLatin1String(name)) : value;
}

QString valueOr(const char *name, const QString &fallback)
{
	const QString value = valueOf(name);
	return value.isEmpty() ? fallback : value;
}

int numberOr(const char *name, int fallback)
{
	const QString value = valueOf(name);
	return settings::complaint(QLatin1String(name), value).isEmpty() ? value.toInt() : fallback;
}
} // namespace

QString stateFolder()
{
	const QString shared = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
	const QString home = qEnvironmentVariable("KESTRUNE_SAMPLE_HELPER_HOME");
	return absolute(home.isEmpty() ? shared + u"/kestrune-sample-helper"_s : home);
}

QString settingsFile()
{
	return stateFolder() + u"/settings.ini"_s;
}

QStringList problems()
{
	QStringList result = fileContent().problems;
	const QLatin1StringView start(prefix);
	const QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
	for (const QString &variable : variables.keys()) {
		const QString value = variables.value(variable);
		if (!variable.startsWith(start) || value.isEmpty()) {
			continue;
		}
		const QString complaint = settings::complaint(variable.sliced(start.size()), value);
		if (!complaint.isEmpty()) {
			result += u"%1 %2."_s.arg(variable, complaint);
		}
	}
	return result;
}

QString outputFolder()
{
	return absolute(valueOr("OUTPUT", stateFolder() + u"/Shorts"_s));
}

bool isOffline()
{
	return valueOf("OFFLINE") == u"1"_s || QFileInfo::exists(stateFolder() + u"/offline"_s);
}

QString ffmpegFolder()
{
	return valueOf("FFMPEG");
}

QString camera()
{
	return valueOf("CAMERA");
}

QString encoder()
{
	return valueOf("ENCODER");
}

int clipsAtOnce()
{
	return numberOr("CLIPS_AT_ONCE", 1);
}

int queueLimit_ms()
{
	return numberOr("QUEUE_LIMIT_MS", 3'600'000);
}

int trialLimit_ms()
{
	return numberOr("TRIAL_LIMIT_MS", 20000);
}

int stillLimit_ms()
{
	return numberOr("STILL_LIMIT_MS", 60000);
}

QString whisperProgram()
{
	return valueOf("WHISPER");
}

QString whisperModel()
{
	return valueOf("WHISPER_MODEL");
}

int whisperLimit_ms()
{
	return numberOr("WHISPER_LIMIT_MS", 600000);
}

int linkDelay_ms()
{
	return numberOr("LINK_MS", 2000);
}

int consentDelay_ms()
{
	return numberOr("CONSENT_MS", 2000);
}

int downloadDelay_ms()
{
	return numberOr("DOWNLOAD_MS", 1500);
}

QString releaseFolder()
{
	return absolute(valueOr("UPDATES", stateFolder() + u"/updates"_s));
}

QString currentVersion()
{
	return valueOr("CURRENT_VERSION", u"" SAMPLE_HELPER_VERSION ""_s);
}
} // namespace environment
