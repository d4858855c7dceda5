#include <QLabel>
#include <QProcess>

#include "host/dock_test.hpp"
#include "host/system.hpp"

/// The dock is destroyed during helper runs: they end with it and no callback runs.
class RunsInFlightTest : public DockTest {
	Q_OBJECT

private Q_SLOTS:
	void endWithTheDock_data()
	{
		QTest::addColumn<HelperScript>("script");
		QTest::addColumn<bool>("withItsWindow");

		const QByteArray code = "{\"event\":\"code\",\"url\":\"https://code/1\"}\n";
		const QList<std::pair<const char *, HelperScript>> scripts{
			{"silent", HelperScript().hang()},
			{"ended", HelperScript().write(code)},
			{"failed", HelperScript().exit(3)},
			{"crashed", HelperScript().crash()},
			{"unread output", HelperScript().write(code).write("{\"event\":").hang()},
			{"never-ending output", HelperScript().flood(code)},
		};
		for (const auto &[name, script] : scripts) {
			QTest::addRow("%s, with the main window", name) << script << true;
			QTest::addRow("%s, alone", name) << script << false;
		}
	}
	void endWithTheDock()
	{
		QFETCH(HelperScript, script);
		QFETCH(bool, withItsWindow);
		const QString link = u"--link"_s;
		helper().on(link, script);
		QVERIFY(load());
		invoke("connectAccount");
		// No event loop here, so the run's output is unread when the dock goes.
		QVERIFY(dock()->findChild<QProcess *>()->waitForStarted());
		while (helper().count(link) == 0) {
			QTest::qSleep(5);
		}
		QTest::qSleep(100);

		if (withItsWindow) {
			destroyMainWindow();
		} else {
			delete dock();
		}
		QTest::qWait(100);

		QVERIFY(openedUrls().isEmpty());
		QCOMPARE(helper().runs().size(), 1);
		QVERIFY(!isAlive(helper().processIds(link).front()));
	}

	void endInTheMiddleOfTheirOutput()
	{
		const QString link = u"--link"_s;
		helper().on(link, HelperScript().flood("{\"event\":\"code\",\"url\":\"https://code/1\"}\n"));
		QVERIFY(load());
		invoke("connectAccount");
		QTRY_VERIFY(openedUrls().size() > 10);
		destroyMainWindow();
		const qsizetype opened = openedUrls().size();
		QTest::qWait(100);
		QCOMPARE(openedUrls().size(), opened);
		QVERIFY(!isAlive(helper().processIds(link).front()));
	}

	void severalEndTogether()
	{
		const QStringList commands{u"--link"_s, u"--status"_s, u"--recent"_s, u"--preview"_s};
		for (const QString &command : commands) {
			helper().on(command, HelperScript().hang());
		}
		QVERIFY(load());
		for (const char *slot : {"connectAccount", "refreshStatus", "refreshRecent", "refreshPreview"}) {
			invoke(slot);
		}
		for (const QString &command : commands) {
			QTRY_VERIFY(helper().count(command) > 0);
		}
		const qsizetype runs = helper().runs().size();
		destroyMainWindow();
		QTest::qWait(100);
		QCOMPARE(helper().runs().size(), runs);
		for (const QString &command : commands) {
			QVERIFY(!isAlive(helper().processIds(command).front()));
		}
	}

	void aRunThatNeverStartedIsNoTrouble()
	{
		QFile file(scratchPath(u"not-a-program"_s));
		QVERIFY(file.open(QIODevice::WriteOnly));
		file.close();
		qputenv("KESTRUNE_HELPER", file.fileName().toUtf8());
		QVERIFY(load());
		invoke("connectAccount");
		QTRY_VERIFY(status()->text().startsWith(u"Couldn't start"));
		destroyMainWindow();
		QVERIFY(!dock());
	}
};

KESTRUNE_TEST(RunsInFlightTest)
#include "runs_in_flight.moc"
