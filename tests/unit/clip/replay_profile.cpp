#include <QScopeGuard>
#include <QTest>

#include "clip/replay_profile.hpp"
#include "host/test_program.hpp"

using namespace Qt::StringLiterals;

class ReplayProfileTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void replayProfile_data()
	{
		QTest::addColumn<QByteArray>("before");
		QTest::addColumn<bool>("changed");
		QTest::addColumn<int>("simple");
		QTest::addColumn<int>("advanced");
		const auto row = [](const char *name, const QByteArray &simple, const QByteArray &advanced,
				    bool changed, int simpleTime_s, int advancedTime_s) {
			QTest::newRow(name)
				<< QByteArray("[SimpleOutput]\n" + simple + "\n[AdvOut]\n" + advanced + "\n") << changed
				<< simpleTime_s << advancedTime_s;
		};
		const QByteArray on = "RecRB=true\nRecRBTime=";
		const QByteArray off = "RecRB=false\nRecRBTime=";
		row("nothing there", "", "", true, 120, 120);
		row("both fine", on + "300", on + "120", false, 300, 120);
		row("simple too short", on + "60", on + "300", true, 120, 300);
		row("simple one second short", on + "119", on + "120", true, 120, 120);
		row("advanced too short", on + "121", on + "20", true, 121, 120);
		row("simple off", off + "120", on + "200", true, 120, 200);
		row("off with a long time", off + "300", on + "200", true, 120, 200);
		row("on without a time", "RecRB=true", on + "200", true, 120, 200);
		row("both off", off + "20", off + "20", true, 120, 120);
	}
	void replayProfile()
	{
		QFETCH(QByteArray, before);
		QFETCH(bool, changed);
		QFETCH(int, simple);
		QFETCH(int, advanced);
		config_t *profile = nullptr;
		QCOMPARE(config_open_string(&profile, before.constData()), CONFIG_SUCCESS);
		const auto close = qScopeGuard([profile] { config_close(profile); });

		QCOMPARE(enableReplayBuffer(profile), changed);
		QVERIFY(config_get_bool(profile, "SimpleOutput", "RecRB"));
		QVERIFY(config_get_bool(profile, "AdvOut", "RecRB"));
		QCOMPARE(config_get_int(profile, "SimpleOutput", "RecRBTime"), simple);
		QCOMPARE(config_get_int(profile, "AdvOut", "RecRBTime"), advanced);
		QVERIFY(!enableReplayBuffer(profile));
	}
};

KESTRUNE_TEST(ReplayProfileTest)
#include "replay_profile.moc"
