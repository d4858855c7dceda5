#include "commands/account.hpp"
#include "commands/chat.hpp"
#include "commands/clip.hpp"
#include "commands/help.hpp"
#include "commands/preview.hpp"
#include "commands/recent.hpp"
#include "commands/update.hpp"
#include "support/events.hpp"
#include "support/log.hpp"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <array>
#include <cstdio>

namespace {

struct Command {
	const char *name{};
	/// What its value stands for; empty for a command without one.
	const char *valueName{};
	int (*run)(const QCommandLineParser &){};
};

// What they do is told in help.cpp.
constexpr std::array<Command, 14> commands{{
	{"status", "", runStatus},
	{"link", "", runLink},
	{"process", "replay", runProcess},
	{"preview", "", runPreview},
	{"recent", "", runRecent},
	{"chat-get", "", runChatGet},
	{"chat-set", "json", runChatSet},
	{"poll-triggers", "", runPollTriggers},
	{"check-update", "", runCheckUpdate},
	{"download-update", "", runDownloadUpdate},
	{"unlink", "", runUnlink},
	{"revoke", "", runRevoke},
	{"say", "name", runSay},
	{"new-stream", "", runNewStream},
}};

constexpr std::array switches{"no-browser", "help", "version"};
constexpr std::array options{"seconds", "scene", "layout", "style", "font", "caption-position"};

void describe(QCommandLineParser &parser)
{
	for (const Command &command : commands) {
		parser.addOption({QLatin1String(command.name), {}, QLatin1String(command.valueName)});
	}
	for (const char *name : switches) {
		parser.addOption(QCommandLineOption(QLatin1String(name)));
	}
	for (const char *name : options) {
		parser.addOption({QLatin1String(name), {}, QStringLiteral("value")});
	}
}

int print(const QString &text)
{
	std::fputs(text.toUtf8().constData(), stdout);
	return 0;
}

/// Runs the one command that the arguments ask for.
int dispatch(const QStringList &arguments)
{
	QCommandLineParser parser;
	describe(parser);
	if (!parser.parse(arguments)) {
		const QStringList unknown = parser.unknownOptionNames();
		if (unknown.isEmpty()) {
			throw Failure(parser.errorText());
		}
		const QString dashes = unknown.first().size() == 1 ? QStringLiteral("-") : QStringLiteral("--");
		throw Failure(QStringLiteral("The sample helper doesn't know %1%2 yet.").arg(dashes, unknown.first()));
	}
	if (parser.isSet(QStringLiteral("help"))) {
		return print(QString::fromUtf8(helpText));
	}
	if (parser.isSet(QStringLiteral("version"))) {
		return print(QStringLiteral("sample-helper %1\n").arg(QCoreApplication::applicationVersion()));
	}
	const Command *wanted = nullptr;
	for (const Command &command : commands) {
		if (!parser.isSet(QLatin1String(command.name))) {
			continue;
		}
		if (wanted != nullptr) {
			throw Failure(QStringLiteral("The sample helper takes one command at a time."));
		}
		wanted = &command;
	}
	if (wanted == nullptr) {
		throw Failure(QStringLiteral("Nothing to do. Try sample-helper --help."));
	}
	const QStringList texts = parser.positionalArguments();
	if (!texts.isEmpty() && wanted->run != runSay) {
		throw Failure(
			QStringLiteral("The sample helper doesn't know what to do with \"%1\".").arg(texts.first()));
	}
	return wanted->run(parser);
}

} // namespace

int main(int argc, char *argv[])
{
	const QCoreApplication application(argc, argv);
	QCoreApplication::setApplicationName(QStringLiteral("sample-helper"));
	QCoreApplication::setApplicationVersion(QStringLiteral(SAMPLE_HELPER_VERSION));
	startLog();
	try {
		return dispatch(QCoreApplication::arguments());
	} catch (const Failure &failure) {
		qWarning("%s", failure.what());
		QJsonObject members = failure.members();
		members[QStringLiteral("error")] = failure.text();
		sendEvent(QStringLiteral("error"), members);
		return 1;
	}
}
