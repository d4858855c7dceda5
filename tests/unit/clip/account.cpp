#include <QLabel>
#include <QPushButton>

#include "host/dock_test.hpp"

class AccountTest : public DockTest {
	Q_OBJECT

	QPushButton *connectButton() const { return button(u"Connect account"_s); }
	QPushButton *clipButton() const { return child<QPushButton>(u"clipBtn"_s); }
	void click() const { QTest::mouseClick(connectButton(), Qt::LeftButton); }

	static QJsonObject event(const QString &kind, const QJsonObject &more = {})
	{
		QJsonObject object = more;
		object[u"event"] = kind;
		return object;
	}

private Q_SLOTS:
	void aClickStartsOneRun()
	{
		helper().on(u"--link"_s, HelperScript().hang());
		QVERIFY(load());
		click();
		QVERIFY(statusIs(u"Opening your browser…"_s, informationColour));
		QVERIFY(!connectButton()->isEnabled());
		click();
		invoke("connectAccount");
		QTRY_COMPARE(helper().count(u"--link"_s), 1);
		QTest::qWait(100);
		QCOMPARE(helper().runs(u"--link"_s), QList<QStringList>({{u"--link"_s, u"--no-browser"_s}}));
	}

	void goesThroughTheBrowserToALinkedAccount()
	{
		frontend().replayBufferActive = true;
		helper().on(u"--status"_s, HelperScript().await(u"status"_s).event(linkedStatus()));
		helper().on(u"--link"_s,
			    HelperScript()
				    .event(event(u"code"_s, {{u"url"_s, u"https://link.example/a?b=%20c"_s},
							     {u"code"_s, u"ABCD-1234"_s}}))
				    .await(u"confirmed"_s)
				    .event(event(u"linked"_s))
				    .await(u"end"_s));
		QVERIFY(load());
		click();
		TRY_STATUS(u"Finish in your browser (code ABCD-1234). Waiting…"_s, informationColour);
		QCOMPARE(openedUrls(), QList<QUrl>{QUrl(u"https://link.example/a?b=%20c"_s)});

		helper().open(u"confirmed"_s);
		TRY_STATUS(u"Connected!"_s, informationColour);
		QVERIFY(!connectButton()->isEnabled());
		QVERIFY(!clipButton()->isEnabled());
		QVERIFY(label(u"Not connected"_s));

		helper().open(u"end"_s);
		QTRY_VERIFY(connectButton()->isEnabled());
		QVERIFY(hasStarted(u"--status"_s));
		helper().open(u"status"_s);
		TRY_STATUS(pressText, informationColour);
		QVERIFY(connectButton()->isHidden());
		QVERIFY(clipButton()->isEnabled());
	}

	void aCodeWithoutMembersIsShownEmpty()
	{
		helper().on(u"--link"_s, HelperScript().event(event(u"code"_s)).hang());
		QVERIFY(load());
		click();
		TRY_STATUS(u"Finish in your browser (code ). Waiting…"_s, informationColour);
		QVERIFY(openedUrls().isEmpty());
	}

	void aCodeIsShownAsItIs()
	{
		helper().on(u"--link"_s, HelperScript().event(event(u"code"_s, {{u"code"_s, u"%1%2"_s}})).hang());
		QVERIFY(load());
		click();
		TRY_STATUS(u"Finish in your browser (code %1%2). Waiting…"_s, informationColour);
	}

	void anErrorIsShownAndTheButtonComesBack()
	{
		helper().on(u"--link"_s, HelperScript().event(event(u"error"_s, {{u"error"_s, u"expired"_s}})).exit(1));
		helper().on(u"--status"_s, HelperScript().hang());
		QVERIFY(load());
		click();
		QTRY_VERIFY(connectButton()->isEnabled());
		QVERIFY(statusIs(u"expired"_s, errorColour));
		QVERIFY(hasStarted(u"--status"_s));
	}

	void otherEventsAreIgnored()
	{
		helper().on(u"--link"_s, HelperScript()
						 .event(event(u"Linked"_s))
						 .event(event(u"CODE"_s, {{u"url"_s, u"https://x.example"_s}}))
						 .event({{u"error"_s, u"x"_s}}));
		helper().on(u"--status"_s, HelperScript().hang());
		QVERIFY(load());
		click();
		QTRY_VERIFY(connectButton()->isEnabled());
		QVERIFY(statusIs(u"Opening your browser…"_s, informationColour));
		QVERIFY(openedUrls().isEmpty());
	}

	void aCrashBringsTheButtonBackToo()
	{
		helper().on(u"--link"_s, HelperScript().crash());
		QVERIFY(load());
		click();
		QTRY_VERIFY(connectButton()->isEnabled());
		QVERIFY(hasStarted(u"--status"_s));
		click();
		QTRY_COMPARE(helper().count(u"--link"_s), 2);
	}

	void aLinkedAccountCannotClipWhileLinking()
	{
		QVERIFY(loadReady());
		helper().on(u"--link"_s, HelperScript().await(u"end"_s));
		invoke("connectAccount");
		QVERIFY(!clipButton()->isEnabled());
		QCOMPARE(clipButton()->toolTip(), u"Save the last few seconds and turn them into a vertical Short."_s);
		helper().on(u"--status"_s, HelperScript().event(linkedStatus()));
		helper().open(u"end"_s);
		QTRY_VERIFY(clipButton()->isEnabled());
	}

	void withoutAHelperLinkingStaysUnderWay()
	{
		QVERIFY(loadReady());
		const QByteArray fake = qgetenv("KESTRUNE_HELPER");
		qputenv("KESTRUNE_HELPER", "/nowhere");
		invoke("connectAccount");
		QVERIFY(statusIs(u"Kestrune helper missing. Reinstall from " KESTRUNE_WEBSITE "/addons"_s,
				 errorColour));

		qputenv("KESTRUNE_HELPER", fake);
		helper().on(u"--status"_s, HelperScript().event(linkedStatus()));
		invoke("refreshStatus");
		TRY_STATUS(pressText, informationColour);
		invoke("connectAccount");
		QTest::qWait(100);
		QCOMPARE(helper().count(u"--link"_s), 0);
		QVERIFY(!connectButton()->isEnabled());
		QVERIFY(!clipButton()->isEnabled());
	}
};

KESTRUNE_TEST(AccountTest)
#include "account.moc"
