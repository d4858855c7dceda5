#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "support/environment.hpp"

using namespace Qt::StringLiterals;

namespace environment {
namespace {

QString valueOr(const char *variable, const QString &fallback)
{
	const QString value = qEnvironmentVariable(variable);
	return value.isEmpty() ? fallback : value;
}

QString absolute(const QString &path)
{
	return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

int millisecondsOr(const char *variable, int fallback)
{
	bool isNumber = false;
	const int value = qEnvironmentVariableIntValue(variable, &isNumber);
	return isNumber && value >= 0 ? value : fallback;
}

} // namespace

QString stateFolder()
{
	const QString shared = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
	return absolute(valueOr("KESTRUNE_SAMPLE_HELPER_HOME", shared + u"/kestrune-sample-helper"_s));
}

QString outputFolder()
{
	return absolute(valueOr("KESTRUNE_SAMPLE_HELPER_OUTPUT", stateFolder() + u"/Shorts"_s));
}

bool isOffline()
{
	return qEnvironmentVariable("KESTRUNE_SAMPLE_HELPER_OFFLINE") == u"1"_s ||
	       QFileInfo::exists(stateFolder() + u"/offline"_s);
}

QString ffmpegFolder()
{
	return qEnvironmentVariable("KESTRUNE_SAMPLE_HELPER_FFMPEG");
}

QString camera()
{
	return qEnvironmentVariable("KESTRUNE_SAMPLE_HELPER_CAMERA");
}

QString encoder()
{
	return qEnvironmentVariable("KESTRUNE_SAMPLE_HELPER_ENCODER");
}

int trialLimit_ms()
{
	return millisecondsOr("KESTRUNE_SAMPLE_HELPER_TRIAL_LIMIT_MS", 20000);
}

int stillLimit_ms()
{
	return millisecondsOr("KESTRUNE_SAMPLE_HELPER_STILL_LIMIT_MS", 60000);
}

QString whisperProgram()
{
	return qEnvironmentVariable("KESTRUNE_SAMPLE_HELPER_WHISPER");
}

QString whisperModel()
{
	return qEnvironmentVariable("KESTRUNE_SAMPLE_HELPER_WHISPER_MODEL");
}

int whisperLimit_ms()
{
	return millisecondsOr("KESTRUNE_SAMPLE_HELPER_WHISPER_LIMIT_MS", 600000);
}

int linkDelay_ms()
{
	return millisecondsOr("KESTRUNE_SAMPLE_HELPER_LINK_MS", 2000);
}

int consentDelay_ms()
{
	return millisecondsOr("KESTRUNE_SAMPLE_HELPER_CONSENT_MS", 2000);
}

int downloadDelay_ms()
{
	return millisecondsOr("KESTRUNE_SAMPLE_HELPER_DOWNLOAD_MS", 1500);
}

QString releaseFolder()
{
	return absolute(valueOr("KESTRUNE_SAMPLE_HELPER_UPDATES", stateFolder() + u"/updates"_s));
}

QString currentVersion()
{
	return valueOr("KESTRUNE_SAMPLE_HELPER_CURRENT_VERSION", u"" SAMPLE_HELPER_VERSION ""_s);
}

} // namespace environment
