#include "commands/commands.hpp"
#include "commands/help.hpp"
#include "support/events.hpp"
#include "support/log.hpp"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

namespace {

void describe(QCommandLineParser &parser)
{
	for (const Command &command : commands()) {
		parser.addOption({QLatin1String(command.name), {}, QLatin1String(command.value)});
	}
	for (const std::span<const Option> options : {lookOptions(), otherOptions()}) {
		for (const Option &option : options) {
			parser.addOption({QLatin1String(option.name), {}, QLatin1String(option.value)});
		}
	}
	for (const char *name : {"help", "version"}) {
		parser.addOption(QCommandLineOption(QLatin1String(name)));
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
		return print(helpText());
	}
	if (parser.isSet(QStringLiteral("version"))) {
		return print(QStringLiteral("sample-helper %1\n").arg(QCoreApplication::applicationVersion()));
	}
	const Command *wanted = nullptr;
	for (const Command &command : commands()) {
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
	const QStringList words = parser.positionalArguments();
	if (!words.isEmpty() && QLatin1String(wanted->words).isEmpty()) {
		throw Failure(
			QStringLiteral("The sample helper doesn't know what to do with \"%1\".").arg(words.first()));
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
