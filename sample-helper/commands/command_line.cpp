#include <QCommandLineParser>
#include <QCoreApplication>

#include "commands/command_line.hpp"
#include "commands/commands.hpp"
#include "commands/help.hpp"
#include "support/events.hpp"

#include <cstdio>

using namespace Qt::StringLiterals;

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

const Command &wantedCommand(const QCommandLineParser &parser)
{
	const Command *wanted = nullptr;
	for (const Command &command : commands()) {
		if (!parser.isSet(QLatin1String(command.name))) {
			continue;
		}
		if (wanted != nullptr) {
			throw Failure(u"The sample helper takes one command at a time."_s);
		}
		wanted = &command;
	}
	if (wanted == nullptr) {
		throw Failure(u"Nothing to do. Try sample-helper --help."_s);
	}
	return *wanted;
}
} // namespace

int runCommandLine(const QStringList &arguments)
{
	QCommandLineParser parser;
	describe(parser);
	if (!parser.parse(arguments)) {
		const QStringList unknown = parser.unknownOptionNames();
		if (unknown.isEmpty()) {
			throw Failure(parser.errorText());
		}
		const QString dashes = unknown.first().size() == 1 ? u"-"_s : u"--"_s;
		throw Failure(u"The sample helper doesn't know %1%2 yet."_s.arg(dashes, unknown.first()));
	}
	if (parser.isSet(u"help"_s)) {
		return print(helpText());
	}
	if (parser.isSet(u"version"_s)) {
		return print(u"sample-helper %1\n"_s.arg(QCoreApplication::applicationVersion()));
	}
	const Command &command = wantedCommand(parser);
	const QStringList words = parser.positionalArguments();
	if (!words.isEmpty() && QLatin1String(command.words).isEmpty()) {
		throw Failure(u"The sample helper doesn't know what to do with \"%1\"."_s.arg(words.first()));
	}
	return command.run(parser);
}
