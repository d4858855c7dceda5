#include <QElapsedTimer>
#include <QMap>

#include "host/dock_test.hpp"

/// What the dock does by itself after construction, in real time.
class StartUpTest : public DockTest {
	Q_OBJECT

private Q_SLOTS:
	void asksTheHelperOneAfterTheOther()
	{
		const QStringList commands{u"--status"_s, u"--recent"_s, u"--preview"_s, u"--check-update"_s};
		QElapsedTimer clock;
		clock.start();
		QVERIFY(load());

		QMap<QString, qint64> firstSeen_ms;
		while (firstSeen_ms.size() < commands.size() && clock.elapsed() < 60000) {
			QTest::qWait(10);
			for (const QString &command : commands) {
				if (!firstSeen_ms.contains(command) && helper().count(command) > 0) {
					firstSeen_ms[command] = clock.elapsed();
				}
			}
		}

		// Qt's coarse timers may be 5 % early. A helper starts late on a busy machine.
		const auto seenFrom = [&firstSeen_ms](const QString &command, qint64 earliest_ms) {
			constexpr qint64 start_ms = 15000;
			const qint64 seen_ms = firstSeen_ms.value(command, -1);
			return seen_ms >= earliest_ms && seen_ms <= earliest_ms + start_ms;
		};
		QVERIFY2(seenFrom(u"--status"_s, 1500), qPrintable(QString::number(firstSeen_ms[u"--status"_s])));
		QVERIFY2(seenFrom(u"--recent"_s, 1900), qPrintable(QString::number(firstSeen_ms[u"--recent"_s])));
		QVERIFY2(seenFrom(u"--preview"_s, 2375), qPrintable(QString::number(firstSeen_ms[u"--preview"_s])));
		QVERIFY2(seenFrom(u"--check-update"_s, 7600),
			 qPrintable(QString::number(firstSeen_ms[u"--check-update"_s])));
		for (const QString &command : commands) {
			QCOMPARE(helper().count(command), 1);
		}
	}

	void aDockThatGoesFirstAsksNothing()
	{
		QVERIFY(load());
		destroyMainWindow();
		QTest::qWait(3000);
		QVERIFY(helper().runs().isEmpty());
	}
};

KESTRUNE_TEST(StartUpTest)
#include "start_up.moc"
