#include <QLabel>

#include "host/dock_test.hpp"

/// A confirmed save stops its watchdog, in real time.
class SaveConfirmedTest : public DockTest {
	Q_OBJECT

private Q_SLOTS:
	void saysNothingLater()
	{
		QVERIFY(loadReady());
		helper().on(u"--process"_s, HelperScript().hang());
		frontend().lastReplay = "/replay.mkv";
		invoke("clipThat");
		frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_SAVED);
		QTest::qWait(16500);
		QVERIFY2(statusIs(u"Clip saved. Making your Short (about 1–3 min)…"_s, informationColour),
			 qPrintable(status()->text()));
	}
};

KESTRUNE_TEST(SaveConfirmedTest)
#include "save_confirmed.moc"
