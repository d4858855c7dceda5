#include <QComboBox>
#include <QJsonArray>
#include <QLabel>
#include <QPushButton>

#include "host/dock_test.hpp"

class ClipFlowTest : public DockTest {
	Q_OBJECT

	void saved(const QByteArray &path = "/replays/Replay ä.mkv") const
	{
		frontend().lastReplay = path;
		frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_SAVED);
	}

	/// Makes a clip with this helper script.
	void clip(const HelperScript &script)
	{
		helper().on(u"--process"_s, script);
		const qsizetype before = helper().count(u"--process"_s);
		invoke("clipThat");
		saved();
		QTRY_COMPARE(helper().count(u"--process"_s), before + 1);
	}

	QStringList processArguments() { return helper().runs(u"--process"_s).value(0); }

private Q_SLOTS:
	void withoutAnAccountAClipLinksInstead()
	{
		frontend().replayBufferActive = true;
		helper().on(u"--link"_s, HelperScript().hang());
		QVERIFY(load());
		invoke("clipThat");
		QTRY_COMPARE(helper().runs(), QList<QStringList>({{u"--link"_s, u"--no-browser"_s}}));
		QVERIFY(statusIs(u"Opening your browser…"_s, informationColour));
		QCOMPARE(frontend().saveRequests, 0);

		saved();
		QCOMPARE(frontend().lastReplayQueries, 0);
	}

	void withTheReplayBufferOffAClipStartsItAndIsForgotten()
	{
		QVERIFY(loadReady());
		frontend().replayBufferActive = false;
		invoke("clipThat");
		QCOMPARE(frontend().startRequests, 1);
		QCOMPARE(frontend().saveRequests, 0);
		QVERIFY(statusIs(u"Starting the Replay Buffer… press Clip that again in a few seconds."_s,
				 informationColour));

		saved();
		QCOMPARE(frontend().lastReplayQueries, 0);
	}

	void theButtonSavesTheReplay()
	{
		QVERIFY(loadReady());
		QTest::mouseClick(child<QPushButton>(u"clipBtn"_s), Qt::LeftButton);
		QCOMPARE(frontend().saveRequests, 1);
		QVERIFY(statusIs(u"Saving the last 60 s…"_s, informationColour));
		QCOMPARE(frontend().lastReplayQueries, 0);
	}

	void namesTheLengthItSaves_data()
	{
		QTest::addColumn<int>("length");
		QTest::addColumn<QString>("text");
		QTest::newRow("30") << 30 << u"Saving the last 30 s…"_s;
		QTest::newRow("90") << 90 << u"Saving the last 90 s…"_s;
		QTest::newRow("120") << 120 << u"Saving the last 120 s…"_s;
	}
	void namesTheLengthItSaves()
	{
		QFETCH(int, length);
		QFETCH(QString, text);
		QVERIFY(loadReady());
		choose(u"seconds"_s, length);
		invoke("clipThat");
		QVERIFY(statusIs(text, informationColour));
	}

	void namesTheLengthAsTheBoxShowsIt()
	{
		QVERIFY(loadReady());
		auto *box = child<QComboBox>(u"seconds"_s);
		box->setItemText(box->currentIndex(), u"Last minute"_s);
		invoke("clipThat");
		QVERIFY(statusIs(u"Saving the last minute…"_s, informationColour));
		box->setCurrentIndex(-1);
		invoke("clipThat");
		QVERIFY(statusIs(u"Saving the last …"_s, informationColour));
	}

	void handsTheReplayToTheHelper()
	{
		QVERIFY(loadReady());
		choose(u"seconds"_s, 90);
		choose(u"layout"_s, u"podcast"_s);
		choose(u"style"_s, u"neon"_s);
		choose(u"font"_s, u"inter"_s);
		choose(u"pos"_s, u"bottom"_s);
		invoke("clipThat");
		saved();
		QVERIFY(statusIs(u"Clip saved. Making your Short (about 1–3 min)…"_s, informationColour));
		QTRY_COMPARE(processArguments(),
			     QStringList({u"--process"_s, u"/replays/Replay ä.mkv"_s, u"--seconds"_s, u"90"_s,
					  u"--scene"_s, u"obs"_s, u"--layout"_s, u"podcast"_s, u"--style"_s, u"neon"_s,
					  u"--font"_s, u"inter"_s, u"--caption-position"_s, u"bottom"_s}));
	}

	void withoutCaptionsThereIsNoPosition()
	{
		QVERIFY(loadReady());
		choose(u"style"_s, u"none"_s);
		clip({});
		QCOMPARE(processArguments().mid(8), QStringList({u"--style"_s, u"none"_s, u"--font"_s, u"bebas"_s}));
	}

	void emptyChoicesAreLeftOut()
	{
		QVERIFY(loadReady());
		for (const char *box : {"layout", "style", "font"}) {
			child<QComboBox>(QString::fromLatin1(box))->clear();
		}
		clip({});
		QCOMPARE(processArguments(),
			 QStringList({u"--process"_s, u"/replays/Replay ä.mkv"_s, u"--seconds"_s, u"60"_s, u"--scene"_s,
				      u"obs"_s, u"--caption-position"_s, u"auto"_s}));
	}

	void aReplaySavedByObsAloneIsNotProcessed()
	{
		QVERIFY(loadReady());
		const QString text = status()->text();
		saved();
		QCOMPARE(frontend().lastReplayQueries, 0);
		QCOMPARE(status()->text(), text);
	}

	void oneRequestIsProcessedOnce()
	{
		QVERIFY(loadReady());
		clip({});
		saved();
		QCOMPARE(frontend().lastReplayQueries, 1);
	}

	void aSaveWithoutAFileIsReportedAndOver()
	{
		QVERIFY(loadReady());
		invoke("clipThat");
		frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_SAVED);
		QVERIFY(statusIs(u"OBS didn't report the saved replay."_s, errorColour));
		saved();
		QCOMPARE(frontend().lastReplayQueries, 1);
		QCOMPARE(helper().count(u"--process"_s), 0);
	}

	void theHelpersEventsAreShown_data()
	{
		QTest::addColumn<QJsonObject>("event");
		QTest::addColumn<QString>("text");
		QTest::addColumn<QString>("colour");

		const auto row = [](const char *name, const QJsonObject &event, const QString &text,
				    const QString &colour) { QTest::newRow(name) << event << text << colour; };
		row("done", {{u"event"_s, u"done"_s}}, u"Your Short is ready."_s, informationColour);
		row("done with a file",
		    {{u"event"_s, u"done"_s}, {u"formatted"_s, QJsonArray{u"/s/a.mp4"_s, u"/s/b.mp4"_s}}},
		    u"Your Short is ready: a.mp4"_s, informationColour);
		row("done with a note",
		    {{u"event"_s, u"done"_s}, {u"formatted"_s, QJsonArray()}, {u"note"_s, u"queued"_s}},
		    u"Your Short is ready. (queued)"_s, informationColour);
		row("pending", {{u"event"_s, u"pending"_s}}, u"Offline: clip kept and will upload automatically."_s,
		    informationColour);
		row("error", {{u"event"_s, u"error"_s}, {u"error"_s, u"no %1 disk"_s}},
		    u"Clip kept locally: no %1 disk"_s, errorColour);
		row("error without a text", {{u"event"_s, u"error"_s}}, u"Clip kept locally: "_s, errorColour);
		row("another", {{u"event"_s, u"Done"_s}}, u"Clip saved. Making your Short (about 1–3 min)…"_s,
		    informationColour);
	}
	void theHelpersEventsAreShown()
	{
		QFETCH(QJsonObject, event);
		QFETCH(QString, text);
		QFETCH(QString, colour);
		QVERIFY(loadReady());
		clip(HelperScript().event(event));
		QTRY_VERIFY(!isRunning(u"--process"_s));
		QVERIFY2(statusIs(text, colour), qPrintable(status()->text()));
	}

	void anErrorMayAskForTheStatus_data()
	{
		QTest::addColumn<QJsonValue>("relink");
		QTest::addColumn<int>("statusRuns");
		QTest::newRow("relink") << QJsonValue(true) << 3;
		QTest::newRow("no relink") << QJsonValue(false) << 2;
		QTest::newRow("not a bool") << QJsonValue(u"true"_s) << 2;
	}
	void anErrorMayAskForTheStatus()
	{
		QFETCH(QJsonValue, relink);
		QFETCH(int, statusRuns);
		QVERIFY(loadReady());
		clip(HelperScript().event(
			{{u"event"_s, u"error"_s}, {u"error"_s, u"unlinked"_s}, {u"relink"_s, relink}}));
		// Wait for the dock's own status query, 1.5 s after the load.
		QTest::qWait(2000);
		QCOMPARE(helper().count(u"--status"_s), statusRuns);
		QVERIFY(statusIs(u"Clip kept locally: unlinked"_s, errorColour));
	}

	void theEndOfARunRefreshesTheList_data()
	{
		QTest::addColumn<HelperScript>("script");
		QTest::newRow("success") << HelperScript();
		QTest::newRow("failure") << HelperScript().exit(5);
		QTest::newRow("crash") << HelperScript().crash();
	}
	void theEndOfARunRefreshesTheList()
	{
		QFETCH(HelperScript, script);
		QVERIFY(loadReady());
		clip(script);
		QTRY_VERIFY(!isRunning(u"--process"_s));
		QVERIFY(hasStarted(u"--recent"_s));
	}

	void secondRequestsSaveAgain()
	{
		QVERIFY(loadReady());
		invoke("clipThat");
		invoke("clipThat");
		QCOMPARE(frontend().saveRequests, 2);
		saved("/1.mkv");
		saved("/2.mkv");
		QTRY_COMPARE(helper().count(u"--process"_s), 1);
		QCOMPARE(processArguments().at(1), u"/1.mkv"_s);
	}

	void clipsMayOverlap()
	{
		QVERIFY(loadReady());
		clip(HelperScript().await(u"first"_s).event({{u"event"_s, u"done"_s}}));
		QVERIFY(child<QPushButton>(u"clipBtn"_s)->isEnabled());
		clip(HelperScript().event({{u"event"_s, u"pending"_s}}));
		TRY_STATUS(u"Offline: clip kept and will upload automatically."_s, informationColour);
		helper().open(u"first"_s);
		TRY_STATUS(u"Your Short is ready."_s, informationColour);
	}

	void aRunningClipKeepsItsReadyText()
	{
		QVERIFY(loadReady());
		clip(HelperScript().await(u"end"_s));
		helper().on(u"--status"_s, HelperScript().event(linkedStatus()));
		invoke("refreshStatus");
		TRY_STATUS(pressText, informationColour);
		helper().on(u"--status"_s, HelperScript().hang());
		frontend().replayBufferActive = false;
		invoke("updateClipButton");
		QVERIFY(statusIs(pressText, informationColour));

		helper().open(u"end"_s);
		QTRY_VERIFY(!isRunning(u"--process"_s));
		invoke("updateClipButton");
		QVERIFY(statusIs(u"Replay Buffer is off. Starting it…"_s, informationColour));
	}

	void aHelperThatVanishedCountsAsARunningClipForEver()
	{
		QVERIFY(loadReady());
		const QByteArray fake = qgetenv("KESTRUNE_HELPER");
		qputenv("KESTRUNE_HELPER", "/nowhere");
		invoke("clipThat");
		saved();
		QVERIFY(status()->text().startsWith(u"Kestrune helper missing."));

		qputenv("KESTRUNE_HELPER", fake);
		helper().on(u"--status"_s, HelperScript().event(linkedStatus()));
		invoke("refreshStatus");
		TRY_STATUS(pressText, informationColour);
		frontend().replayBufferActive = false;
		invoke("updateClipButton");
		QVERIFY(statusIs(pressText, informationColour));
	}
};

KESTRUNE_TEST(ClipFlowTest)
#include "clip_flow.moc"
