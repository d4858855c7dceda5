#include <QJsonArray>
#include <QLabel>

#include "host/dock_test.hpp"

class TriggerPollingTest : public DockTest {
	Q_OBJECT

	/// A ready dock with the chat command on.
	bool loadPolling()
	{
		helper().on(
			u"--chat-get"_s,
			HelperScript().event({{u"event"_s, u"chat"_s}, {u"enabled"_s, true}, {u"granted"_s, true}}));
		if (!loadReady()) {
			return false;
		}
		return QTest::qWaitFor(
			[this] { return label(u"On: mods can type <b></b> (0 used this stream)."_s) != nullptr; },
			patience_ms);
	}

	static QJsonObject triggers(const QJsonArray &elements)
	{
		return {{u"event"_s, u"triggers"_s}, {u"triggers"_s, elements}};
	}
	static QJsonObject by(const QString &name) { return {{u"by"_s, name}}; }

	/// One poll with this answer; returns after its end.
	void poll(const HelperScript &answer)
	{
		helper().on(u"--poll-triggers"_s, answer);
		const qsizetype before = helper().count(u"--poll-triggers"_s);
		invoke("pollTriggers");
		QTRY_COMPARE(helper().count(u"--poll-triggers"_s), before + 1);
		QTRY_VERIFY(!isRunning(u"--poll-triggers"_s));
	}

private Q_SLOTS:
	void aTriggerMakesAClip()
	{
		QVERIFY(loadPolling());
		poll(HelperScript().event(triggers({by(u"mod_ana"_s)})));
		QVERIFY(statusIs(u"Clipped from chat by @mod_ana."_s, informationColour));
		QCOMPARE(frontend().saveRequests, 1);
		QCOMPARE(helper().runs(u"--poll-triggers"_s), QList<QStringList>({{u"--poll-triggers"_s}}));
	}

	void severalTriggersInOneAnswerMakeOneClip()
	{
		QVERIFY(loadPolling());
		poll(HelperScript().event(triggers({by(u"first"_s), by(u"second"_s), by(u"last <b>%1"_s)})));
		QVERIFY(statusIs(u"Clipped from chat by @last <b>%1."_s, informationColour));
		QCOMPARE(frontend().saveRequests, 1);
	}

	void theLastTriggerMayLackAName_data()
	{
		QTest::addColumn<QJsonValue>("last");
		QTest::newRow("empty object") << QJsonValue(QJsonObject());
		QTest::newRow("another type") << QJsonValue(QJsonObject{{u"by"_s, 3}});
		QTest::newRow("not an object") << QJsonValue(7);
	}
	void theLastTriggerMayLackAName()
	{
		QFETCH(QJsonValue, last);
		QVERIFY(loadPolling());
		poll(HelperScript().event(triggers({by(u"first"_s), last})));
		QVERIFY(statusIs(u"Clipped from chat by @."_s, informationColour));
	}

	void answersWithoutTriggersDoNothing()
	{
		QVERIFY(loadPolling());
		const QString before = status()->text();
		poll(HelperScript()
			     .event(triggers({}))
			     .event({{u"event"_s, u"triggers"_s}})
			     .event({{u"event"_s, u"triggers"_s}, {u"triggers"_s, by(u"x"_s)}})
			     .event({{u"event"_s, u"Triggers"_s}, {u"triggers"_s, QJsonArray{by(u"x"_s)}}}));
		QCOMPARE(frontend().saveRequests, 0);
		QCOMPARE(status()->text(), before);
	}

	void aClipThatCannotStartIsStillCredited()
	{
		QVERIFY(loadPolling());
		frontend().replayBufferActive = false;
		poll(HelperScript().event(triggers({by(u"ana"_s)})));
		QVERIFY(statusIs(u"Clipped from chat by @ana."_s, informationColour));
		QCOMPARE(frontend().saveRequests, 0);
		QCOMPARE(frontend().startRequests, 1);
	}

	void pollsNeverOverlap()
	{
		QVERIFY(loadPolling());
		helper().on(u"--poll-triggers"_s, HelperScript().await(u"end"_s));
		invoke("pollTriggers");
		invoke("pollTriggers");
		QTRY_COMPARE(helper().count(u"--poll-triggers"_s), 1);
		QTest::qWait(100);
		QCOMPARE(helper().count(u"--poll-triggers"_s), 1);
		helper().open(u"end"_s);
		QTRY_VERIFY(!isRunning(u"--poll-triggers"_s));
		poll(HelperScript());
	}

	void aFailedPollDoesNotEndPolling()
	{
		QVERIFY(loadPolling());
		poll(HelperScript().crash());
		poll(HelperScript().exit(5));
		QCOMPARE(helper().count(u"--poll-triggers"_s), 2);
	}

	void asksNothingWhileTheCommandIsOff()
	{
		QVERIFY(loadReady());
		invoke("pollTriggers");
		QVERIFY(!isRunning(u"--poll-triggers"_s));
	}

	void theTimerPollsEveryFiveSeconds()
	{
		QVERIFY(loadPolling());
		QTRY_COMPARE(helper().count(u"--poll-triggers"_s), 1);
	}

	void aMissingHelperEndsPollingForGood()
	{
		QVERIFY(loadPolling());
		const QByteArray fake = qgetenv("KESTRUNE_HELPER");
		qputenv("KESTRUNE_HELPER", "/nowhere");
		invoke("pollTriggers");
		QVERIFY(statusIs(u"Kestrune helper missing. Reinstall from " KESTRUNE_WEBSITE "/addons"_s,
				 errorColour));
		qputenv("KESTRUNE_HELPER", fake);
		invoke("pollTriggers");
		QVERIFY(!isRunning(u"--poll-triggers"_s));
	}
};

KESTRUNE_TEST(TriggerPollingTest)
#include "trigger_polling.moc"
