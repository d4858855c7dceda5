#include <QElapsedTimer>
#include <QJsonArray>
#include <QLabel>
#include <QPushButton>

#include "host/dock_test.hpp"

#include <util/config-file.h>

/// Turning the Replay Buffer on, and the messages about it.
class ReplayBufferTest : public DockTest {
	Q_OBJECT

	void openProfile(const QByteArray &text)
	{
		const QString path = scratchPath(u"basic.ini"_s);
		QFile file(path);
		QVERIFY(file.open(QIODevice::WriteOnly));
		file.write(text);
		file.close();
		QCOMPARE(config_open(&frontend().profile, path.toUtf8().constData(), CONFIG_OPEN_EXISTING),
			 CONFIG_SUCCESS);
	}

	QByteArray profileText() const
	{
		QFile file(scratchPath(u"basic.ini"_s));
		return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
	}

	/// Links the account while the Replay Buffer is off, which turns it on.
	void linkWithBufferOff()
	{
		QVERIFY(loadReady());
		frontend().replayBufferActive = false;
		helper().on(u"--status"_s, HelperScript().event(linkedStatus()));
		invoke("refreshStatus");
		QTRY_COMPARE(frontend().startRequests, 1);
		helper().on(u"--status"_s, HelperScript().hang());
	}

	QList<LogLine> linesAfterLoad() const { return obs().moduleLog().mid(1); }

private Q_SLOTS:
	void cleanup()
	{
		if (frontend().profile) {
			config_close(frontend().profile);
		}
		frontend().profile = nullptr;
		DockTest::cleanup();
	}

	void theDockMayGoWhileObsStartsIt_data()
	{
		QTest::addColumn<QByteArray>("slot");
		QTest::newRow("asked by the user") << QByteArray("clipThat");
		QTest::newRow("asked in the chat") << QByteArray("pollTriggers");
		QTest::newRow("after a status") << QByteArray("refreshStatus");
	}
	void theDockMayGoWhileObsStartsIt()
	{
		QFETCH(QByteArray, slot);
		helper().on(
			u"--chat-get"_s,
			HelperScript().event({{u"event"_s, u"chat"_s}, {u"enabled"_s, true}, {u"granted"_s, true}}));
		helper().on(u"--poll-triggers"_s,
			    HelperScript().event({{u"event"_s, u"triggers"_s},
						  {u"triggers"_s, QJsonArray{QJsonObject{{u"by"_s, u"mod"_s}}}}}));
		QVERIFY(loadReady());
		QTRY_VERIFY(label(u"On: mods can type <b></b> (0 used this stream)."_s));
		frontend().replayBufferActive = false;
		helper().on(u"--status"_s, HelperScript().event(linkedStatus()));

		// The user quits OBS in a message box.
		frontend().onStartRequest = [this] { destroyMainWindow(); };
		invoke(slot.constData());
		QTRY_VERIFY(!dock());
		QCOMPARE(frontend().startRequests, 1);
		QTest::qWait(100);
	}

	void switchesItOnInTheProfileAndSaves()
	{
		openProfile("[SimpleOutput]\nRecRB=true\nRecRBTime=60\nFilePath=/videos\n");
		linkWithBufferOff();
		QVERIFY(config_get_bool(frontend().profile, "SimpleOutput", "RecRB"));
		QCOMPARE(config_get_int(frontend().profile, "SimpleOutput", "RecRBTime"), 120);
		QVERIFY(config_get_bool(frontend().profile, "AdvOut", "RecRB"));
		QCOMPARE(config_get_int(frontend().profile, "AdvOut", "RecRBTime"), 120);
		QVERIFY(profileText().contains("RecRBTime=120"));
		QVERIFY(profileText().contains("FilePath=/videos"));
		const QList<LogLine> expected{{LOG_INFO, u"[kestrune] enabled Replay Buffer (120 s) in the profile"_s}};
		QCOMPARE(linesAfterLoad(), expected);
	}

	void leavesAGoodProfileAlone()
	{
		const QByteArray text =
			"[SimpleOutput]\nRecRB=true\nRecRBTime=300\n\n[AdvOut]\nRecRB=true\nRecRBTime=120\n";
		openProfile(text);
		linkWithBufferOff();
		QCOMPARE(config_get_int(frontend().profile, "SimpleOutput", "RecRBTime"), 300);
		QCOMPARE(profileText(), text);
		QVERIFY(linesAfterLoad().isEmpty());
	}

	void startsItWithoutAProfileToo()
	{
		linkWithBufferOff();
		QCOMPARE(frontend().profileQueries, 1);
		QVERIFY(linesAfterLoad().isEmpty());
	}

	void aRunningOneIsLeftAlone()
	{
		QVERIFY(loadReady());
		QCOMPARE(frontend().profileQueries, 0);
		QCOMPARE(frontend().startRequests, 0);
		QVERIFY(statusIs(pressText, informationColour));
	}

	void aLaterLookTellsWhetherItRuns_data()
	{
		QTest::addColumn<bool>("starts");
		QTest::addColumn<QString>("text");
		QTest::addColumn<QString>("colour");
		QTest::newRow("it runs") << true << u"Replay Buffer on. Ready to clip."_s << informationColour;
		QTest::newRow("it does not")
			<< false
			<< u"Replay Buffer is set up but OBS needs to apply it: open Settings and click OK (or restart OBS once)."_s
			<< errorColour;
	}
	void aLaterLookTellsWhetherItRuns()
	{
		QFETCH(bool, starts);
		QFETCH(QString, text);
		QFETCH(QString, colour);
		QVERIFY(loadReady());
		frontend().replayBufferActive = false;
		frontend().replayBufferStarts = starts;
		QElapsedTimer clock;
		clock.start();
		invoke("clipThat");
		QVERIFY(statusIs(u"Starting the Replay Buffer… press Clip that again in a few seconds."_s,
				 informationColour));
		QTRY_VERIFY2(status()->text() == text, qPrintable(status()->text()));
		QCOMPARE(status()->styleSheet(), colour);
		QVERIFY2(clock.elapsed() >= 1490, qPrintable(QString::number(clock.elapsed())));
	}

	void everyRequestTriesAgain()
	{
		QVERIFY(loadReady());
		frontend().replayBufferActive = false;
		invoke("clipThat");
		invoke("clipThat");
		QCOMPARE(frontend().startRequests, 2);
		QCOMPARE(frontend().saveRequests, 0);
	}

	void aStopIsReported()
	{
		QVERIFY(loadReady());
		frontend().replayBufferActive = false;
		frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_STOPPED);
		QVERIFY(statusIs(u"Replay Buffer stopped. Start it (Controls → Start Replay Buffer) to clip."_s,
				 errorColour));
		QVERIFY(!child<QPushButton>(u"clipBtn"_s)->isEnabled());
	}

	void aStartIsReportedToALinkedAccount()
	{
		QVERIFY(loadReady());
		frontend().replayBufferActive = false;
		frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_STOPPED);
		frontend().replayBufferActive = true;
		frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_STARTED);
		QVERIFY(statusIs(pressText, informationColour));
		QVERIFY(child<QPushButton>(u"clipBtn"_s)->isEnabled());
	}

	void aStartAsksForAMissingAccount()
	{
		QVERIFY(load());
		frontend().replayBufferActive = true;
		frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_STARTED);
		QVERIFY(statusIs(u"Replay Buffer on. Connect your account to start clipping."_s, informationColour));
		QVERIFY(!child<QPushButton>(u"clipBtn"_s)->isEnabled());
	}
};

KESTRUNE_TEST(ReplayBufferTest)
#include "replay_buffer.moc"
