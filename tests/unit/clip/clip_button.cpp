#include <QTest>

#include "clip/clip_button.hpp"
#include "host/test_program.hpp"

using namespace Qt::StringLiterals;

class ClipButtonTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void readiness_data()
	{
		QTest::addColumn<bool>("linked");
		QTest::addColumn<bool>("active");
		QTest::addColumn<bool>("linking");
		QTest::addColumn<bool>("enabled");
		QTest::addColumn<QString>("toolTip");
		const QString connect = u"Connect your Kestrune account first (Connect account below)."_s;
		const QString clip = u"Save the last few seconds and turn them into a vertical Short."_s;
		const QString buffer = u"The Replay Buffer isn't running. Kestrune starts it for you; "
				       "if it stays off, open Settings → OK or restart OBS once."_s;
		QTest::newRow("nothing") << false << false << false << false << connect;
		QTest::newRow("linking") << false << false << true << false << connect;
		QTest::newRow("active") << false << true << false << false << connect;
		QTest::newRow("active, linking") << false << true << true << false << connect;
		QTest::newRow("linked") << true << false << false << false << buffer;
		QTest::newRow("linked, linking") << true << false << true << false << buffer;
		QTest::newRow("linked, active") << true << true << false << true << clip;
		QTest::newRow("linked, active, linking") << true << true << true << false << clip;
	}
	void readiness()
	{
		QFETCH(bool, linked);
		QFETCH(bool, active);
		QFETCH(bool, linking);
		QFETCH(bool, enabled);
		QFETCH(QString, toolTip);
		const ClipReadiness readiness{linked, active, linking};
		QCOMPARE(canClip(readiness), enabled);
		QCOMPARE(clipButtonToolTip(readiness), toolTip);
	}
};

KESTRUNE_TEST(ClipButtonTest)
#include "clip_button.moc"
