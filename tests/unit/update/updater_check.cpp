#include "host/update_test.hpp"

class UpdaterCheckTest : public UpdateTest {
	Q_OBJECT

	/// One check with this answer; returns after its end.
	void check(const QJsonObject &answer)
	{
		helper().on(u"--check-update"_s, HelperScript().event(answer));
		const qsizetype before = helper().count(u"--check-update"_s);
		QVERIFY(invoke("checkUpdate"));
		QTRY_COMPARE(helper().count(u"--check-update"_s), before + 1);
		QTRY_VERIFY(!isRunning(u"--check-update"_s));
	}

private Q_SLOTS:
	void offersANewerVersion()
	{
		QVERIFY(loadListening());
		QVERIFY(!updateButton()->isVisibleTo(dock()));
		const QString statusBefore = status()->text();
		check(offer(u"1.0.7"_s));
		QCOMPARE(updateButton()->text(), u"Update available v1.0.7 — Update now"_s);
		QCOMPARE(updateButton()->toolTip(), u"Fixes captions."_s);
		QCOMPARE(updateButton()->styleSheet(), normalUpdateStyle);
		QVERIFY(updateButton()->isEnabled());
		QVERIFY(updateButton()->isVisibleTo(dock()));
		QCOMPARE(status()->text(), statusBefore);
		QCOMPARE(takeStates(), QStringList{u"available: Update available v1.0.7 — Update now"_s});
		QCOMPARE(helper().runs(u"--check-update"_s), QList<QStringList>({{u"--check-update"_s}}));
	}

	void otherAnswersChangeNothing_data()
	{
		QTest::addColumn<QJsonObject>("answer");
		QTest::newRow("no newer version")
			<< QJsonObject{{u"event"_s, u"update"_s}, {u"update"_s, false}, {u"latest"_s, u"2"_s}};
		QTest::newRow("not said") << QJsonObject{{u"event"_s, u"update"_s}, {u"latest"_s, u"2"_s}};
		QTest::newRow("of another type")
			<< QJsonObject{{u"event"_s, u"update"_s}, {u"update"_s, u"true"_s}, {u"latest"_s, u"2"_s}};
		QTest::newRow("another event") << QJsonObject{{u"event"_s, u"Update"_s}, {u"update"_s, true}};
	}
	void otherAnswersChangeNothing()
	{
		QFETCH(QJsonObject, answer);
		QVERIFY(loadListening());
		check(answer);
		QVERIFY(!updateButton()->isVisibleTo(dock()));
		check(offer(u"1.0.7"_s));
		check(answer);
		QVERIFY(updateButton()->isVisibleTo(dock()));
		QCOMPARE(updateButton()->text(), u"Update available v1.0.7 — Update now"_s);
	}

	void anOfferMayLackItsMembers()
	{
		QVERIFY(loadListening());
		check({{u"event"_s, u"update"_s}, {u"update"_s, true}, {u"latest"_s, 7}});
		QCOMPARE(updateButton()->text(), u"Update available v — Update now"_s);
		QCOMPARE(updateButton()->toolTip(), QString());
	}

	void aNewOfferReplacesAnError()
	{
		QVERIFY(loadOffered());
		helper().on(u"--download-update"_s, HelperScript().exit(1));
		click();
		TRY_ERROR(u"Update failed: the helper stopped (code 1). Retry update"_s);
		check({{u"event"_s, u"update"_s}, {u"update"_s, false}});
		QVERIFY(showsError(u"Update failed: the helper stopped (code 1). Retry update"_s));
		check(offer(u"1.0.8"_s));
		QCOMPARE(updateButton()->text(), u"Update available v1.0.8 — Update now"_s);
		QCOMPARE(updateButton()->styleSheet(), normalUpdateStyle);
	}

	void aMissingHelperIsSilent()
	{
		QVERIFY(loadListening());
		const QString statusBefore = status()->text();
		qputenv("KESTRUNE_HELPER", "/nowhere");
		invoke("checkUpdate");
		QCOMPARE(status()->text(), statusBefore);
	}

	void noCheckDuringADownload()
	{
		QVERIFY(loadOffered());
		helper().on(u"--download-update"_s, HelperScript().hang());
		click();
		QTRY_COMPARE(helper().count(u"--download-update"_s), 1);
		invoke("checkUpdate");
		QVERIFY(!isRunning(u"--check-update"_s));
	}

	void anAnswerThatComesDuringADownloadIsApplied()
	{
		QVERIFY(loadOffered());
		helper().on(u"--check-update"_s, HelperScript().await(u"answer"_s).event(offer(u"1.0.8"_s)));
		helper().on(u"--download-update"_s, HelperScript().hang());
		invoke("checkUpdate");
		click();
		QVERIFY(showsStep(u"Downloading v1.0.7… 0%"_s));
		helper().open(u"answer"_s);
		QTRY_COMPARE(updateButton()->text(), u"Update available v1.0.8 — Update now"_s);
		QVERIFY(updateButton()->isEnabled());
	}
};

KESTRUNE_TEST(UpdaterCheckTest)
#include "updater_check.moc"
