#include "host/obs_session.hpp"
#include "host/system.hpp"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <mutex>

using namespace Qt::StringLiterals;

namespace {
std::mutex logMutex;
QList<LogLine> logLines;

void catchLine(int level, const char *format, va_list arguments, void *)
{
	std::array<char, 4096> text{};
	std::vsnprintf(text.data(), text.size(), format, arguments);
	const std::lock_guard lock(logMutex);
	logLines << LogLine{level, QString::fromUtf8(text.data())};
}

bool isModuleLine(const QString &text)
{
	return text.startsWith(u"[kestrune] ");
}
} // namespace

ObsSession::ObsSession()
{
	{
		const std::lock_guard lock(logMutex);
		logLines.clear();
	}
	base_set_log_handler(catchLine, nullptr);
	mendSystem();
	if (!obs_startup("en-US", folder_.path().toUtf8().constData(), nullptr)) {
		qFatal("libobs did not start");
	}
}

ObsSession::~ObsSession()
{
	obs_shutdown();
	base_set_log_handler(nullptr, nullptr);
}

QList<LogLine> ObsSession::log() const
{
	const std::lock_guard lock(logMutex);
	return logLines;
}

QList<LogLine> ObsSession::moduleLog() const
{
	QList<LogLine> lines = log();
	lines.removeIf([](const LogLine &line) { return !isModuleLine(line.text); });
	return lines;
}

QString ObsSession::configFolder() const
{
	return folder_.filePath(u"kestrune"_s);
}
