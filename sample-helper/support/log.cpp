#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "support/environment.hpp"
#include "support/log.hpp"

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {
constexpr qint64 maxLog_bytes = 1'000'000;

bool alsoOnTerminal = true;

QString logPath()
{
	return environment::stateFolder() + u"/sample-helper.log"_s;
}

void writeMessage(QtMsgType, const QMessageLogContext &, const QString &message)
{
	const QString line = u"%1 [%2] %3\n"_s.arg(QDateTime::currentDateTime().toString(Qt::ISODateWithMs))
				     .arg(QCoreApplication::applicationPid())
				     .arg(message);
	const QByteArray bytes = line.toUtf8();
	if (alsoOnTerminal) {
		std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
	}
	// A log that cannot be written (a full disk) must not stop a clip.
	QFile file(logPath());
	if (file.open(QIODevice::WriteOnly | QIODevice::Append)) {
		file.write(bytes);
	}
}
} // namespace

void startLog()
{
	QDir().mkpath(environment::stateFolder());
	if (QFileInfo(logPath()).size() > maxLog_bytes) {
		const QString old = logPath() + u".old"_s;
		QFile::remove(old);
		QFile::rename(logPath(), old);
	}
	qInstallMessageHandler(writeMessage);
}

void logToFileOnly()
{
	alsoOnTerminal = false;
}
