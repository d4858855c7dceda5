#include <QCoreApplication>
#include <QDir>
#include <QJsonDocument>
#include <QTemporaryDir>

#include "helper_host.hpp"
#include "support/events.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

using namespace Qt::StringLiterals;

namespace {
QCoreApplication *application = nullptr;
QTemporaryDir *folder = nullptr;

bool isOwn(const std::string &path)
{
	static const std::string own = stateFolder().toStdString();
	return path == own || path.starts_with(own + '/');
}

/// What the system tells of itself: its name for the lock files, the time zone.
bool isOfTheSystem(const std::string &path)
{
	return path.starts_with("/etc/") || path.starts_with("/proc/") || path.starts_with("/usr/share/zoneinfo/") ||
	       path.ends_with("/machine-id");
}

bool isOrCanBeRegular(const char *path)
{
	struct stat status{};
	return stat(path, &status) != 0 || S_ISREG(status.st_mode) || S_ISDIR(status.st_mode);
}

/// Standard output in memory while it lives.
class TakenOutput {
public:
	TakenOutput() { stdout = open_memstream(&bytes_, &size_); }
	~TakenOutput() { end(); }
	Q_DISABLE_COPY_MOVE(TakenOutput)

	QByteArray end()
	{
		if (stdout != real_) {
			std::fclose(stdout);
			stdout = real_;
			output_ = QByteArray(bytes_, static_cast<qsizetype>(size_));
			std::free(bytes_);
			bytes_ = nullptr;
		}
		return output_;
	}

private:
	std::FILE *real_{stdout};
	char *bytes_{nullptr};
	std::size_t size_{0};
	QByteArray output_{};
};

int runAsMain(const std::function<int()> &command)
{
	try {
		return command();
	} catch (const Failure &failure) {
		require(!failure.text().isEmpty(), "a failure says what it is");
		sendEvent(u"error"_s, {{u"error"_s, failure.text()}});
		return 1;
	}
}
} // namespace

void startHelperHost()
{
	if (folder) {
		return;
	}

	printFindingsOnly();
	static std::array<char, 5> name{"fuzz"};
	static std::array<char *, 2> arguments{name.data(), nullptr};
	static int count = 1;
	application = new QCoreApplication(count, arguments.data());
	folder = new QTemporaryDir;
	require(folder->isValid(), "the state folder can be made");
	qputenv("KESTRUNE_SAMPLE_HELPER_HOME", stateFolder().toUtf8());
	qputenv("KESTRUNE_SAMPLE_HELPER_FFMPEG", "/nowhere");
	for (const char *wait : {"LINK", "CONSENT", "DOWNLOAD"}) {
		qputenv((QByteArray("KESTRUNE_SAMPLE_HELPER_") + wait + "_MS").constData(), "0");
	}
}

void stopHost()
{
	delete folder;
	folder = nullptr;
	delete application;
	application = nullptr;
}

QString stateFolder()
{
	return folder->path();
}

Answer answerOf(const std::function<int()> &command, const std::function<bool(const char *path)> &mayRead)
{
	const auto mayOpen = [&mayRead](const char *path, int flags) {
		const bool writes = flags != O_PATH && (flags & (O_WRONLY | O_RDWR | O_CREAT)) != 0;
		return isOwn(path) || flags == O_PATH ||
		       (!writes && isOrCanBeRegular(path) && (isOfTheSystem(path) || mayRead(path)));
	};
	Answer answer;
	TakenOutput output;
	{
		const CostWatch watch({.mayOpen = mayOpen});
		answer.exitCode = runAsMain(command);
	}
	answer.output = output.end();
	QByteArrayList lines = answer.output.split('\n');
	require(lines.takeLast().isEmpty(), "what is said ends with a line");
	for (const QByteArray &line : lines) {
		const QJsonObject event = QJsonDocument::fromJson(line).object();
		if (!event.isEmpty()) {
			answer.events += event;
		}
	}
	return answer;
}

Answer answerOf(const std::function<int()> &command)
{
	return answerOf(command, [](const char *) { return false; });
}
