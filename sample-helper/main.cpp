#include "account.hpp"
#include "chat.hpp"
#include "clip.hpp"
#include "diagnostics.hpp"
#include "events.hpp"
#include "preview.hpp"
#include "recent.hpp"
#include "update.hpp"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <array>
#include <cstdio>

namespace {

struct Command {
	const char *name{};
	/// What its value stands for; empty for a command without one.
	const char *valueName{};
	const char *description{};
	int (*run)(const QCommandLineParser &){};
};

constexpr std::array<Command, 14> commands{{
	{"status", "", "Tell whether an account is linked and what can be chosen.", runStatus},
	{"link", "", "Link this device (a pretended confirmation, without network).", runLink},
	{"process", "replay", "Make a vertical Short of the end of a replay.", runProcess},
	{"preview", "", "Draw a still picture of a look.", runPreview},
	{"recent", "", "List the newest Shorts.", runRecent},
	{"chat-get", "", "Tell the settings of the chat command.", runChatGet},
	{"chat-set", "json", "Change the settings of the chat command.", runChatSet},
	{"poll-triggers", "", "Take the uses of the chat command since the last poll.", runPollTriggers},
	{"check-update", "", "Tell whether another version is on offer.", runCheckUpdate},
	{"download-update", "", "Fetch the installer of the version on offer.", runDownloadUpdate},
	{"unlink", "", "Development: forget the linked account.", runUnlink},
	{"revoke", "", "Development: as if the account's owner had revoked this device.", runRevoke},
	{"say", "name", "Development: as if this person wrote TEXT (default: the command) in chat.", runSay},
	{"new-stream", "", "Development: count the uses of the chat command from zero.", runNewStream},
}};

struct Modifier {
	const char *name{};
	const char *valueName{};
	const char *description{};
};

constexpr std::array<Modifier, 7> modifiers{{
	{"no-browser", "", "With --link: open no browser (this helper never does)."},
	{"seconds", "n", "With --process: length of the Short."},
	{"scene", "name", "With --process: where the replay comes from (not used)."},
	{"layout", "key", "With --process, --preview: vtuber-bubble, vtuber, facecam, podcast or gameplay."},
	{"style", "key", "With --process, --preview: rune, neon, clean, meme or none."},
	{"font", "key", "With --process, --preview: bebas, montserrat, inter or bangers."},
	{"caption-position", "key", "With --process, --preview: auto, top, middle or bottom."},
}};

constexpr char description[] =
	"Makes vertical Shorts of OBS replays for the Kestrune dock, without account or network.\n"
	"Needs ffmpeg and ffprobe. Point the environment variable KESTRUNE_HELPER at this\n"
	"program before you start OBS, and the dock uses it. Every answer is a line of JSON.";

void describe(QCommandLineParser &parser)
{
	parser.setApplicationDescription(QString::fromLatin1(description));
	for (const Command &command : commands) {
		parser.addOption(QCommandLineOption(QLatin1String(command.name), QLatin1String(command.description),
						    QLatin1String(command.valueName)));
	}
	for (const Modifier &modifier : modifiers) {
		parser.addOption(QCommandLineOption(QLatin1String(modifier.name), QLatin1String(modifier.description),
						    QLatin1String(modifier.valueName)));
	}
	parser.addOption(QCommandLineOption(QStringLiteral("help"), QStringLiteral("Print this text.")));
	parser.addOption(QCommandLineOption(QStringLiteral("version"), QStringLiteral("Print the version.")));
	parser.addPositionalArgument(QStringLiteral("text"), QStringLiteral("With --say: the message."),
				     QStringLiteral("[text]"));
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
		return print(parser.helpText());
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
	startDiagnostics();
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
