#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "fake_helper/system.hpp"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

using namespace Qt::StringLiterals;

// Stands in for the helper: records its call in "runs" in the folder FAKE_HELPER_DIR, then follows the script for its
// first argument ("status.json" for --status). Without a script it exits with code 0.

namespace {
using namespace std::chrono_literals;

QDir folder()
{
	return QDir(qEnvironmentVariable("FAKE_HELPER_DIR"));
}

void note(const QStringList &arguments)
{
	QJsonObject run = startState();
	run[u"pid"] = QCoreApplication::applicationPid();
	run[u"arguments"] = QJsonArray::fromStringList(arguments);
	append(folder().filePath(u"runs"_s), QJsonDocument(run).toJson(QJsonDocument::Compact) + '\n');
}

QJsonArray script(const QStringList &arguments)
{
	QFile file(folder().filePath(arguments.value(0).remove(0, 2) + u".json"_s));
	if (!file.open(QIODevice::ReadOnly)) {
		return {};
	}
	return QJsonDocument::fromJson(file.readAll()).array();
}

void write(std::FILE *stream, const QByteArray &bytes)
{
	std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
	std::fflush(stream);
}

void perform(const QJsonObject &step)
{
	const QString action = step[u"do"].toString();
	const QByteArray bytes = QByteArray::fromBase64(step[u"bytes"].toString().toLatin1());
	if (action == u"write") {
		write(stdout, bytes);
	} else if (action == u"complain") {
		write(stderr, bytes);
	} else if (action == u"await") {
		while (!folder().exists(step[u"gate"].toString())) {
			std::this_thread::sleep_for(2ms);
		}
	} else if (action == u"open") {
		append(folder().filePath(step[u"gate"].toString()), {});
	} else if (action == u"repeat") {
		for (int left = step[u"count"].toInt(); left > 0; --left) {
			write(stdout, bytes);
		}
	} else if (action == u"close output") {
		std::fclose(stdout);
	} else if (action == u"flood") {
		while (std::ferror(stdout) == 0) {
			write(stdout, bytes);
		}
	} else if (action == u"hang") {
		for (;;) {
			std::this_thread::sleep_for(1h);
		}
	} else if (action == u"crash") {
		crash();
	} else if (action == u"exit") {
		std::exit(step[u"code"].toInt());
	}
}
} // namespace

int main(int argc, char **argv)
{
	const QCoreApplication application(argc, argv);
	writeBytesUnchanged();
	const QStringList arguments = QCoreApplication::arguments().mid(1);
	// Read the script before the call can be seen: a test that has seen it may replace the script for the next one.
	const QJsonArray steps = script(arguments);
	note(arguments);
	for (const QJsonValue step : steps) {
		perform(step.toObject());
	}
}
