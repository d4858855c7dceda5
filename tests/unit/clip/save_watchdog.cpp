#include <QElapsedTimer>
#include <QLabel>

#include "host/dock_test.hpp"

/// The watchdog of a save that OBS never confirms, in real time.
class SaveWatchdogTest : public DockTest {
	Q_OBJECT

	const QString timedOut_ = u"OBS didn't save the replay within 15 s. "
				  "Check disk space and Settings → Output → Recording path."_s;

private Q_SLOTS:
	void speaksForTheNewestRequestAndTakesALateSave()
	{
		QVERIFY(loadReady());
		invoke("clipThat");
		QTest::qWait(2000);
		QElapsedTimer sinceNewest;
		sinceNewest.start();
		invoke("clipThat");
		QCOMPARE(frontend().saveRequests, 2);

		// It reports 15 s after the second request, not the first.
		QTRY_VERIFY(statusIs(timedOut_, errorColour));
		QVERIFY2(sinceNewest.elapsed() >= 14200, qPrintable(QString::number(sinceNewest.elapsed())));

		frontend().lastReplay = "/late.mkv";
		frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_SAVED);
		QTRY_COMPARE(helper().count(u"--process"_s), 1);
	}
};

KESTRUNE_TEST(SaveWatchdogTest)
#include "save_watchdog.moc"
