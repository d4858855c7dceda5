#include <QDeadlineTimer>
#include <QListWidget>

#include "host/dock_test.hpp"

namespace {
constexpr int MiB = 1024 * 1024;

QByteArray ignoredLines()
{
	return (QByteArray(1023, 'n') + '\n').repeated(MiB / 1024);
}
} // namespace

/// A helper that writes faster than the dock reads. Qt for Windows takes all of it into memory: the run has to end
/// before that is full.
class FloodingHelperTest : public DockTest {
	Q_OBJECT

private Q_SLOTS:
	void isEnded_data()
	{
		QTest::addColumn<QByteArray>("line");
		QTest::newRow("noise") << QByteArray(1023, 'n') + '\n';
		QTest::newRow("unknown events") << "{\"event\":\"noise\",\"text\":\"" + QByteArray(1000, 'n') + "\"}\n";
		QTest::newRow("lists") << QByteArray("{\"event\":\"recent\",\"folder\":\"/shorts\",\"items\":[]}\n");
	}
	void isEnded()
	{
		QFETCH(QByteArray, line);
		QVERIFY(loadReady());
		helper().on(u"--recent"_s, HelperScript().flood(line.repeated(65536 / line.size())));
		QVERIFY(invoke("refreshRecent"));
		QTRY_COMPARE(helper().count(u"--recent"_s), 1);
		QTRY_VERIFY(!isRunning(u"--recent"_s));

		helper().on(u"--recent"_s, HelperScript().event(recentClip()));
		QVERIFY(invoke("refreshRecent"));
		QTRY_VERIFY(showsTheClip());
	}

	void isEndedWhenTooMuchIsUnread()
	{
		QVERIFY(loadReady());
		QVERIFY(holdUpTheDockDuring(HelperScript().repeat(ignoredLines(), 33).open(u"written"_s).hang()));
		QTRY_VERIFY(!isRunning(u"--recent"_s));
	}

	void isReadWhenLessIsUnread()
	{
		QVERIFY(loadReady());
		QVERIFY(holdUpTheDockDuring(
			HelperScript().repeat(ignoredLines(), 31).event(recentClip()).open(u"written"_s)));
		QTRY_VERIFY(showsTheClip());
	}

private:
	/// Runs the script for recent clips, without an event loop until it has written.
	bool holdUpTheDockDuring(const HelperScript &script)
	{
		helper().on(u"--recent"_s, script);
		if (!invoke("refreshRecent")) {
			return false;
		}
		const QDeadlineTimer deadline(patience_ms);
		while (!helper().isOpen(u"written"_s) && !deadline.hasExpired()) {
			QTest::qSleep(10);
		}
		return helper().isOpen(u"written"_s);
	}

	static QJsonObject recentClip()
	{
		const QJsonObject clip{{u"name"_s, u"after it"_s}, {u"path"_s, u"/shorts/after.mp4"_s}};
		return {{u"event"_s, u"recent"_s}, {u"items"_s, QJsonArray{clip}}};
	}

	bool showsTheClip() const
	{
		const auto *list = dock()->findChild<QListWidget *>();
		return list->count() == 1 && list->item(0)->text() == u"after it"_s;
	}
};

KESTRUNE_TEST(FloodingHelperTest)
#include "flooding_helper.moc"
