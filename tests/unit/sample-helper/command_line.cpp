#include "commands/commands.hpp"
#include "sandbox.hpp"
#include "host/test_program.hpp"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

class CommandLineTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void refuses_what_it_does_not_know_data();
	void refuses_what_it_does_not_know();
	void prints_help_for_people();
	void helps_with_what_it_knows();
	void prints_its_version();
	void writes_one_line_per_event();
	void reports_a_state_folder_that_cannot_be_made();
};

void CommandLineTest::refuses_what_it_does_not_know_data()
{
	QTest::addColumn<QStringList>("arguments");
	QTest::addColumn<QString>("text");
	QTest::newRow("unknown switch") << QStringList{QStringLiteral("--foo")}
					<< QStringLiteral("The sample helper doesn't know --foo yet.");
	QTest::newRow("unknown switch after a command")
		<< QStringList{QStringLiteral("--status"), QStringLiteral("--upload=now")}
		<< QStringLiteral("The sample helper doesn't know --upload yet.");
	QTest::newRow("unknown letter") << QStringList{QStringLiteral("-x")}
					<< QStringLiteral("The sample helper doesn't know -x yet.");
	QTest::newRow("nothing") << QStringList{} << QStringLiteral("Nothing to do. Try sample-helper --help.");
	QTest::newRow("only a modifier") << QStringList{QStringLiteral("--no-browser")}
					 << QStringLiteral("Nothing to do. Try sample-helper --help.");
	QTest::newRow("two commands") << QStringList{QStringLiteral("--status"), QStringLiteral("--recent")}
				      << QStringLiteral("The sample helper takes one command at a time.");
	QTest::newRow("stray word") << QStringList{QStringLiteral("--status"), QStringLiteral("please")}
				    << QStringLiteral("The sample helper doesn't know what to do with \"please\".");
	QTest::newRow("missing value") << QStringList{QStringLiteral("--process")}
				       << QStringLiteral("Missing value after '--process'.");
}

void CommandLineTest::refuses_what_it_does_not_know()
{
	QFETCH(const QStringList, arguments);
	QFETCH(const QString, text);
	const Run run = Sandbox().run(arguments);
	QCOMPARE(run.exitCode, 1);
	QCOMPARE(run.onlyEvent()[QLatin1String("event")].toString(), QStringLiteral("error"));
	QCOMPARE(run.onlyEvent()[QLatin1String("error")].toString(), text);
}

void CommandLineTest::prints_help_for_people()
{
	const Run run = Sandbox().run({QStringLiteral("--help")});
	QCOMPARE(run.exitCode, 0);
	QVERIFY(run.events.isEmpty());
	// Windows ends lines in its own way.
	const QByteArray help = QByteArray(run.output).replace("\r\n", "\n");
	QVERIFY(help.startsWith("Usage: sample-helper COMMAND [OPTION]...\n"));
	for (const char *text :
	     {"\nClips:\n", "\nEnvironment ", "\nExit status:\n", "\nExamples:\n", "KESTRUNE_HELPER"}) {
		QVERIFY2(help.contains(text), text);
	}
	for (const QByteArray &line : help.split('\n')) {
		QVERIFY2(line.size() <= 82, line.constData());
	}
}

void CommandLineTest::helps_with_what_it_knows()
{
	const QString help = QString::fromUtf8(Sandbox().run({QStringLiteral("--help")}).output);
	QSet<QString> told{};
	static const QRegularExpression option(QStringLiteral("^  (--[a-z-]+)"), QRegularExpression::MultilineOption);
	for (const QRegularExpressionMatch &match : option.globalMatch(help)) {
		told += match.captured(1);
	}
	for (const Command &command : commands()) {
		QVERIFY2(told.contains(QStringLiteral("--") + QLatin1String(command.name)), command.name);
	}
	QCOMPARE(told.size(), 23);
	for (const QString &name : std::as_const(told)) {
		// A second unknown switch keeps the run from doing anything.
		const Run run = Sandbox().run({name, QStringLiteral("x"), QStringLiteral("--foo")});
		QCOMPARE(run.onlyEvent()[QLatin1String("error")].toString(),
			 QStringLiteral("The sample helper doesn't know --foo yet."));
	}
}

void CommandLineTest::prints_its_version()
{
	const Run run = Sandbox().run({QStringLiteral("--version")});
	QCOMPARE(run.exitCode, 0);
	QCOMPARE(run.output.trimmed(), QByteArray("sample-helper " SAMPLE_HELPER_VERSION));
}

void CommandLineTest::writes_one_line_per_event()
{
	const Run run = Sandbox().run({QStringLiteral("--link"), QStringLiteral("--no-browser")});
	QCOMPARE(run.events.size(), 2);
	QCOMPARE(run.output.count('\n'), 2);
	QVERIFY(run.output.endsWith('\n'));
	QVERIFY2(!run.output.contains("\": "), "the events are compact");
}

void CommandLineTest::reports_a_state_folder_that_cannot_be_made()
{
	Sandbox sandbox;
	const QString file = sandbox.writeFile(QStringLiteral("a file"), "x");
	sandbox.setVariable(QStringLiteral("KESTRUNE_SAMPLE_HELPER_HOME"), file + QStringLiteral("/state"));
	const Run run = sandbox.run({QStringLiteral("--link")});
	QCOMPARE(run.exitCode, 1);
	QVERIFY(run.onlyEvent()[QLatin1String("error")].toString().startsWith(
		QStringLiteral("couldn't make the folder ")));
}

KESTRUNE_TEST(CommandLineTest)
#include "command_line.moc"
