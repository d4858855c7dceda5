#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include "commands/commands.hpp"
#include "host/test_program.hpp"
#include "sandbox.hpp"

using namespace Qt::StringLiterals;

class CommandLineTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void refusesWhatItDoesNotKnow_data();
	void refusesWhatItDoesNotKnow();
	void printsHelpForPeople();
	void helpsWithWhatItKnows();
	void printsItsVersion();
	void writesOneLinePerEvent();
	void passesOnNoMarkup_data();
	void passesOnNoMarkup();
	void reportsAStateFolderThatCannotBeMade();
};

void CommandLineTest::refusesWhatItDoesNotKnow_data()
{
	QTest::addColumn<QStringList>("arguments");
	QTest::addColumn<QString>("text");
	QTest::newRow("unknown switch") << QStringList{u"--foo"_s} << u"The sample helper doesn't know --foo yet."_s;
	QTest::newRow("unknown switch after a command")
		<< QStringList{u"--status"_s, u"--upload=now"_s} << u"The sample helper doesn't know --upload yet."_s;
	QTest::newRow("unknown letter") << QStringList{u"-x"_s} << u"The sample helper doesn't know -x yet."_s;
	QTest::newRow("nothing") << QStringList{} << u"Nothing to do. Try sample-helper --help."_s;
	QTest::newRow("only a modifier") << QStringList{u"--no-browser"_s}
					 << u"Nothing to do. Try sample-helper --help."_s;
	QTest::newRow("two commands") << QStringList{u"--status"_s, u"--recent"_s}
				      << u"The sample helper takes one command at a time."_s;
	QTest::newRow("stray word") << QStringList{u"--status"_s, u"please"_s}
				    << u"The sample helper doesn't know what to do with \"please\"."_s;
	QTest::newRow("missing value") << QStringList{u"--process"_s} << u"Missing value after '--process'."_s;
}

void CommandLineTest::refusesWhatItDoesNotKnow()
{
	QFETCH(const QStringList, arguments);
	QFETCH(const QString, text);
	const Run run = Sandbox().run(arguments);
	QCOMPARE(run.exitCode, 1);
	QCOMPARE(run.onlyEvent()[u"event"].toString(), u"error"_s);
	QCOMPARE(run.onlyEvent()[u"error"].toString(), text);
}

void CommandLineTest::printsHelpForPeople()
{
	const Run run = Sandbox().run({u"--help"_s});
	QCOMPARE(run.exitCode, 0);
	QVERIFY(run.events.isEmpty());
	// Windows ends lines with CR LF.
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

void CommandLineTest::helpsWithWhatItKnows()
{
	const QString help = QString::fromUtf8(Sandbox().run({u"--help"_s}).output);
	QSet<QString> told{};
	static const QRegularExpression option(u"^  (--[a-z-]+)"_s, QRegularExpression::MultilineOption);
	for (const QRegularExpressionMatch &match : option.globalMatch(help)) {
		told += match.captured(1);
	}
	for (const Command &command : commands()) {
		QVERIFY2(told.contains(u"--"_s + QLatin1String(command.name)), command.name);
	}
	QCOMPARE(told.size(), 24);
	for (const QString &name : std::as_const(told)) {
		// A second, unknown option keeps the run from doing anything.
		const Run run = Sandbox().run({name, u"x"_s, u"--foo"_s});
		QCOMPARE(run.onlyEvent()[u"error"].toString(), u"The sample helper doesn't know --foo yet."_s);
	}
}

void CommandLineTest::printsItsVersion()
{
	const Run run = Sandbox().run({u"--version"_s});
	QCOMPARE(run.exitCode, 0);
	QCOMPARE(run.output.trimmed(), QByteArray("sample-helper " SAMPLE_HELPER_VERSION));
}

void CommandLineTest::writesOneLinePerEvent()
{
	const Run run = Sandbox().run({u"--link"_s, u"--no-browser"_s});
	QCOMPARE(run.events.size(), 2);
	QCOMPARE(run.output.count('\n'), 2);
	QVERIFY(run.output.endsWith('\n'));
	QVERIFY2(!run.output.contains("\": "), "the events are compact");
}

void CommandLineTest::passesOnNoMarkup_data()
{
	QTest::addColumn<QStringList>("arguments");
	QTest::newRow("a switch") << QStringList{u"--<b>x"_s};
	QTest::newRow("the name of a replay") << QStringList{u"--process"_s, u"<b>x.mkv"_s, u"--seconds"_s, u"2"_s};
}

void CommandLineTest::passesOnNoMarkup()
{
	QFETCH(const QStringList, arguments);
	const Run run = Sandbox().run(arguments);
	const QString text = run.onlyEvent()[u"error"].toString();
	QVERIFY2(text.contains(u"‹b>x"_s), qPrintable(text));
	QVERIFY(!text.contains(u'<'));
}

void CommandLineTest::reportsAStateFolderThatCannotBeMade()
{
	Sandbox sandbox;
	const QString file = sandbox.writeFile(u"a file"_s, "x");
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_HOME"_s, file + u"/state"_s);
	const Run run = sandbox.run({u"--link"_s});
	QCOMPARE(run.exitCode, 1);
	QVERIFY(run.onlyEvent()[u"error"].toString().startsWith(u"couldn't make the folder "_s));
}

KESTRUNE_TEST(CommandLineTest)
#include "command_line.moc"
