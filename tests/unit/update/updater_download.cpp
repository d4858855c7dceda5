#include "host/update_test.hpp"

class UpdaterDownloadTest : public UpdateTest {
	Q_OBJECT

	static QJsonObject progress(const QJsonValue &percent, const QString &phase = u"download"_s)
	{
		return {{u"event"_s, u"progress"_s}, {u"phase"_s, phase}, {u"percent"_s, percent}};
	}

private Q_SLOTS:
	void showsItsProgress()
	{
		QVERIFY(loadOffered());
		helper().on(u"--download-update"_s, HelperScript()
							    .await(u"start"_s)
							    .event(progress(42))
							    .event(progress(u"many"_s))
							    .event(progress(50, u"verify"_s))
							    .event({{u"event"_s, u"progress"_s}, {u"percent"_s, 60}})
							    .event(progress(100))
							    .hang());
		click();
		QVERIFY(showsStep(u"Downloading v1.0.7… 0%"_s));
		helper().open(u"start"_s);
		QTRY_VERIFY(showsStep(u"Downloading v1.0.7… 100%"_s));
		QCOMPARE(takeStates(), QStringList({u"downloading: Downloading v1.0.7… 0%"_s,
						    u"downloading: Downloading v1.0.7… 42%"_s,
						    u"downloading: Downloading v1.0.7… 0%"_s,
						    u"downloading: Downloading v1.0.7… 100%"_s}));
		QCOMPARE(helper().runs(u"--download-update"_s), QList<QStringList>({{u"--download-update"_s}}));
	}

	void furtherClicksDoNothing()
	{
		QVERIFY(loadOffered());
		helper().on(u"--download-update"_s, HelperScript().hang());
		click();
		click();
		invoke("installUpdate");
		QTRY_COMPARE(helper().count(u"--download-update"_s), 1);
		QTest::qWait(100);
		QCOMPARE(helper().count(u"--download-update"_s), 1);
	}

	void failures_data()
	{
		QTest::addColumn<QJsonObject>("event");
		QTest::addColumn<QString>("text");
		QTest::newRow("no newer version any more")
			<< QJsonObject{{u"event"_s, u"update"_s}, {u"update"_s, false}}
			<< u"No newer version is available any more. Retry update"_s;
		QTest::newRow("not said whether") << QJsonObject{{u"event"_s, u"update"_s}}
						  << u"No newer version is available any more. Retry update"_s;
		QTest::newRow("error") << QJsonObject{{u"event"_s, u"error"_s}, {u"error"_s, u"disk full"_s}}
				       << u"Update failed: disk full Retry update"_s;
		QTest::newRow("error in the helper's own words")
			<< QJsonObject{{u"event"_s, u"error"_s}, {u"error"_s, u"Update server down."_s}}
			<< u"Update server down. Retry update"_s;
		QTest::newRow("error without words")
			<< QJsonObject{{u"event"_s, u"error"_s}} << u"Update failed:  Retry update"_s;
	}
	void failures()
	{
		QFETCH(QJsonObject, event);
		QFETCH(QString, text);
		QVERIFY(loadOffered());
		helper().on(u"--download-update"_s, HelperScript().event(event).exit(1));
		click();
		TRY_ERROR(text);
		QTRY_VERIFY(!isRunning(u"--download-update"_s));
		QVERIFY(showsError(text));
		QCOMPARE(takeStates().last(), u"error: "_s + text);
	}

	void anOfferDuringTheDownloadIsIgnored()
	{
		QVERIFY(loadOffered());
		helper().on(u"--download-update"_s, HelperScript().event(offer(u"9"_s)).event(progress(5)).hang());
		click();
		QTRY_VERIFY(showsStep(u"Downloading v1.0.7… 5%"_s));
	}

	void aRunThatEndsWithoutAnAnswerFails_data()
	{
		QTest::addColumn<int>("code");
		QTest::newRow("0") << 0;
		QTest::newRow("3") << 3;
	}
	void aRunThatEndsWithoutAnAnswerFails()
	{
		QFETCH(int, code);
		QVERIFY(loadOffered());
		helper().on(u"--download-update"_s, HelperScript().event(progress(7)).exit(code));
		click();
		TRY_ERROR(u"Update failed: the helper stopped (code %1). Retry update"_s.arg(code));
	}

	void aClickAfterAFailureTriesAgain()
	{
		QVERIFY(loadOffered());
		helper().on(u"--download-update"_s, HelperScript().exit(1));
		click();
		TRY_ERROR(u"Update failed: the helper stopped (code 1). Retry update"_s);
		helper().on(u"--download-update"_s, HelperScript().hang());
		click();
		QVERIFY(showsStep(u"Downloading v1.0.7… 0%"_s));
		QTRY_COMPARE(helper().count(u"--download-update"_s), 2);
	}

	void aMissingHelperIsReported()
	{
		QVERIFY(loadOffered());
		qputenv("KESTRUNE_HELPER", "/nowhere");
		click();
		QVERIFY(showsError(u"Update failed: the Kestrune helper is missing. Retry update"_s));
		QCOMPARE(takeStates(),
			 QStringList({u"downloading: Downloading v1.0.7… 0%"_s,
				      u"error: Update failed: the Kestrune helper is missing. Retry update"_s}));
	}
};

KESTRUNE_TEST(UpdaterDownloadTest)
#include "updater_download.moc"
