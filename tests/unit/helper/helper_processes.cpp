#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>

#include "host/dock_test.hpp"

/// Helper runs: their events, their end, and messages about failures. The runs link accounts: each "code" event opens
/// an address, and the end enables the button and asks for the status.
class HelperProcessesTest : public DockTest {
	Q_OBJECT

	static QByteArray codeLine(const QString &name)
	{
		return "{\"event\":\"code\",\"url\":\"https://code/" + name.toUtf8() + "\",\"code\":\"" +
		       name.toUtf8() + "\"}";
	}

	static QList<QUrl> urls(const QStringList &names)
	{
		QList<QUrl> list;
		for (const QString &name : names) {
			list << QUrl(u"https://code/"_s + name);
		}
		return list;
	}

	void startLink(const HelperScript &script)
	{
		helper().on(u"--link"_s, script);
		invoke("connectAccount");
	}

	/// Runs the script until the finish callback.
	void runLink(const HelperScript &script)
	{
		startLink(script);
		QTRY_VERIFY(button(u"Connect account"_s)->isEnabled());
		QVERIFY(hasStarted(u"--status"_s));
	}

	void makeReady()
	{
		frontend().replayBufferActive = true;
		helper().on(u"--status"_s, HelperScript().event(linkedStatus()));
		invoke("refreshStatus");
		QTRY_VERIFY(child<QPushButton>(u"clipBtn"_s)->isEnabled());
		// Ignore the dock's own status query and the chat query that follows.
		helper().on(u"--status"_s, HelperScript().hang());
	}

	/// Only those that link: on a busy machine the dock's own first runs may have begun.
	QList<QProcess *> processes() const
	{
		QList<QProcess *> found = dock()->findChildren<QProcess *>();
		found.removeIf([](const QProcess *process) { return process->arguments().value(0) != u"--link"; });
		return found;
	}

private Q_SLOTS:
	void init()
	{
		DockTest::init();
		QVERIFY(load());
	}

	void passesArgumentsAsTheyAre()
	{
		frontend().lastReplay = u"/rec/ein \"Spaß\" \\ 100%.mkv"_s.toUtf8();
		makeReady();
		invoke("clipThat");
		frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_SAVED);
		QTRY_COMPARE(helper().count(u"--process"_s), 1);
		QCOMPARE(helper().runs(u"--process"_s).front().value(1), u"/rec/ein \"Spaß\" \\ 100%.mkv"_s);
	}

	void deliversEventsInOrder()
	{
		runLink(HelperScript().write(codeLine(u"1"_s) + '\n' + codeLine(u"2"_s) + "\r\n" + codeLine(u"3"_s) +
					     '\n'));
		QCOMPARE(openedUrls(), urls({u"1"_s, u"2"_s, u"3"_s}));
	}

	void deliversASplitEventOnceItIsComplete()
	{
		const QByteArray line = codeLine(u"1"_s);
		startLink(HelperScript()
				  .write(codeLine(u"0"_s) + '\n' + line.first(10))
				  .await(u"rest"_s)
				  .write(line.sliced(10))
				  .await(u"newline"_s)
				  .write("\n")
				  .await(u"end"_s));
		QTRY_COMPARE(openedUrls(), urls({u"0"_s}));
		helper().open(u"rest"_s);
		QTest::qWait(100);
		QCOMPARE(openedUrls(), urls({u"0"_s}));
		helper().open(u"newline"_s);
		QTRY_COMPARE(openedUrls(), urls({u"0"_s, u"1"_s}));
		helper().open(u"end"_s);
	}

	void losesNoEventWhenTheRunEndsWhileAnEventIsHandled()
	{
		makeReady();
		QTRY_VERIFY(!isRunning(u"--chat-get"_s));
		helper().on(u"--chat-get"_s, HelperScript()
						     .write("{\"event\":\"chat\",\"command\":\"!one\"}\n"
							    "{\"event\":\"chat\",\"command\":\"!two\"}\n")
						     .await(u"handled"_s)
						     .write("{\"event\":\"chat\",\"command\":\"!three\"}\n"));
		auto *command = dock()->findChild<QWidget *>(u"chatBox"_s)
					->findChild<QLineEdit *>({}, Qt::FindDirectChildrenOnly);
		QStringList commands;
		connect(command, &QLineEdit::textChanged, this, [this, &commands](const QString &text) {
			commands << text;
			if (text == u"!one") {
				// Like an OBS dialog: wait in an event loop.
				helper().open(u"handled"_s);
				QTRY_VERIFY(!isRunning(u"--chat-get"_s));
			}
		});
		invoke("loadChat");
		QTRY_COMPARE(commands, (QStringList{u"!one"_s, u"!two"_s, u"!three"_s}));
	}

	void deliversEventsWhileTheHelperRuns()
	{
		startLink(HelperScript().write(codeLine(u"1"_s) + '\n').hang());
		QTRY_COMPARE(openedUrls(), urls({u"1"_s}));
		QCOMPARE(processes().size(), 1);
		QCOMPARE(processes().front()->parent(), dock());
		QCOMPARE(processes().front()->state(), QProcess::Running);
	}

	void dropsALastLineWithoutNewline()
	{
		runLink(HelperScript().write(codeLine(u"1"_s) + '\n' + codeLine(u"2"_s)));
		QCOMPARE(openedUrls(), urls({u"1"_s}));
	}

	void dropsLinesThatAreNotObjects()
	{
		runLink(HelperScript().write("\nhello\n[" + codeLine(u"1"_s) + "]\n42\n" + codeLine(u"2"_s) + '\n'));
		QCOMPARE(openedUrls(), urls({u"2"_s}));
	}

	void deliversMoreThanAPipeHolds()
	{
		QByteArray output;
		QStringList names;
		for (int number = 0; number < 3000; ++number) {
			names << QString::number(number);
			output += codeLine(names.last()) + '\n';
		}
		runLink(HelperScript().write(output));
		QCOMPARE(openedUrls(), urls(names));
	}

	void keepsOverlappingRunsApart()
	{
		const QByteArray line = codeLine(u"1"_s);
		startLink(HelperScript().write(line.first(10)).await(u"rest"_s).write(line.sliced(10) + '\n'));
		helper().on(u"--recent"_s,
			    HelperScript().write("{\"event\":\"recent\",\"folder\":\"/shorts\"}\n").hang());
		invoke("refreshRecent");
		QTRY_COMPARE(dock()->findChild<QListWidget *>()->count(), 1);
		QVERIFY(isRunning(u"--link"_s));
		QVERIFY(isRunning(u"--recent"_s));
		QVERIFY(openedUrls().isEmpty());

		helper().open(u"rest"_s);
		QTRY_COMPARE(openedUrls(), urls({u"1"_s}));
	}

	void deletesTheProcessOfAFinishedRun()
	{
		runLink(HelperScript());
		QTRY_VERIFY(processes().isEmpty());
	}

	void aSilentSuccessSaysNothing_data()
	{
		QTest::addColumn<QByteArray>("output");
		QTest::newRow("no output") << QByteArray();
		QTest::newRow("plain text") << QByteArray("working\n");
		QTest::newRow("an array") << QByteArray("[1]\n");
	}
	void aSilentSuccessSaysNothing()
	{
		QFETCH(QByteArray, output);
		runLink(HelperScript().write(output));
		QVERIFY(statusIs(u"Opening your browser…"_s, informationColour));
	}

	void aSilentFailureIsReported_data()
	{
		QTest::addColumn<QByteArray>("output");
		QTest::newRow("no output") << QByteArray();
		QTest::newRow("plain text") << QByteArray("failed\n");
		QTest::newRow("an array") << QByteArray("[1]\n");
		QTest::newRow("an object without newline") << QByteArray("{\"event\":\"code\"}");
	}
	void aSilentFailureIsReported()
	{
		QFETCH(QByteArray, output);
		runLink(HelperScript().write(output).exit(3));
		QVERIFY(statusIs(u"The Kestrune helper stopped unexpectedly (code 3). "
				 "Details: %APPDATA%\\Kestrune\\logs\\helper.log"_s,
				 errorColour));
	}

	void aSilentCrashIsReported()
	{
		runLink(HelperScript().crash());
		QVERIFY(status()->text().startsWith(u"The Kestrune helper stopped unexpectedly (code "));
		QVERIFY(status()->text().endsWith(u"). Details: %APPDATA%\\Kestrune\\logs\\helper.log"));
		QCOMPARE(status()->styleSheet(), errorColour);
	}

	void aHelperThatSpokeIsTrusted_data()
	{
		QTest::addColumn<bool>("crash");
		QTest::newRow("exit code 3") << false;
		QTest::newRow("crash") << true;
	}
	void aHelperThatSpokeIsTrusted()
	{
		QFETCH(bool, crash);
		HelperScript script;
		script.write("{\"anything\":1}\n");
		runLink(crash ? script.crash() : script.exit(3));
		QVERIFY(statusIs(u"Opening your browser…"_s, informationColour));
	}

	void errorOutputIsNotRead()
	{
		runLink(HelperScript()
				.complain(codeLine(u"1"_s) + '\n')
				.complain(QByteArray(1'048'576, 'x'))
				.write(codeLine(u"2"_s) + '\n'));
		QCOMPARE(openedUrls(), urls({u"2"_s}));
	}

	void errorOutputIsNotKept()
	{
		// More than a pipe holds: the event arrives only if somebody drains the pipe.
		startLink(HelperScript().complain(QByteArray(1'048'576, 'x')).write(codeLine(u"1"_s) + '\n').hang());
		QTRY_COMPARE(openedUrls(), urls({u"1"_s}));
		QCOMPARE(processes().size(), 1);
		QCOMPARE(processes().front()->readAllStandardError().size(), 0);
	}

	void aMissingHelperIsReportedAndNothingRuns()
	{
		qputenv("KESTRUNE_HELPER", "/nowhere");
		invoke("connectAccount");
		QVERIFY(statusIs(u"Kestrune helper missing. Reinstall from " KESTRUNE_WEBSITE "/addons"_s,
				 errorColour));
		QVERIFY(processes().isEmpty());
		QTest::qWait(100);
		QVERIFY(!button(u"Connect account"_s)->isEnabled());
		QVERIFY(helper().runs().isEmpty());
	}

	void aHelperThatCannotStartIsReported()
	{
		QFile file(scratchPath(u"not-a-program"_s));
		QVERIFY(file.open(QIODevice::WriteOnly));
		file.close();
		qputenv("KESTRUNE_HELPER", file.fileName().toUtf8());
		invoke("connectAccount");
		TRY_STATUS(u"Couldn't start the Kestrune helper (blocked by antivirus?). "
			   "Reinstall from " KESTRUNE_WEBSITE "/addons"_s,
			   errorColour);
		QTest::qWait(100);
		QVERIFY(!button(u"Connect account"_s)->isEnabled());
		QVERIFY(helper().runs().isEmpty());
		QCOMPARE(processes().size(), 1);
		QCOMPARE(processes().front()->state(), QProcess::NotRunning);
	}
};

KESTRUNE_TEST(HelperProcessesTest)
#include "helper_processes.moc"
