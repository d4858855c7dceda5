#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include "host/test_program.hpp"
#include "clip/clip_command.hpp"
#include "clip/clip_readiness.hpp"
#include "clip/replay_profile.hpp"

using namespace Qt::StringLiterals;

class ClipDecisionsTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void processArguments_data()
	{
		QTest::addColumn<QString>("layout");
		QTest::addColumn<QString>("style");
		QTest::addColumn<QString>("font");
		QTest::addColumn<QString>("position");
		QTest::addColumn<QStringList>("choices");

		QTest::newRow("all") << u"podcast"_s << u"neon"_s << u"inter"_s << u"top"_s
				     << QStringList{u"--layout"_s,
						    u"podcast"_s,
						    u"--style"_s,
						    u"neon"_s,
						    u"--font"_s,
						    u"inter"_s,
						    u"--caption-position"_s,
						    u"top"_s};
		QTest::newRow("none") << u"a"_s << u"none"_s << u"b"_s << u"top"_s
				      << QStringList{u"--layout"_s, u"a"_s,      u"--style"_s,
						     u"none"_s,     u"--font"_s, u"b"_s};
		QTest::newRow("None is a style")
			<< u"a"_s << u"None"_s << u"b"_s << u"top"_s
			<< QStringList{u"--layout"_s,           u"a"_s,  u"--style"_s, u"None"_s, u"--font"_s, u"b"_s,
				       u"--caption-position"_s, u"top"_s};
		QTest::newRow("empty") << QString() << QString() << QString() << QString()
				       << QStringList{u"--caption-position"_s, QString()};
		QTest::newRow("only a font") << QString() << QString() << u"b"_s << u"top"_s
					     << QStringList{u"--font"_s, u"b"_s, u"--caption-position"_s, u"top"_s};
	}
	void processArguments()
	{
		QFETCH(QString, layout);
		QFETCH(QString, style);
		QFETCH(QString, font);
		QFETCH(QString, position);
		QFETCH(QStringList, choices);
		const QStringList start{u"--process"_s, u"C:/a b.mkv"_s, u"--seconds"_s,
					u"120"_s,       u"--scene"_s,    u"obs"_s};
		QCOMPARE(::processArguments(u"C:/a b.mkv"_s, {120, layout, style, font, position}), start + choices);
	}

	void readyText_data()
	{
		QTest::addColumn<QJsonObject>("done");
		QTest::addColumn<QString>("text");
		const auto row = [](const char *name, const QJsonObject &done, const QString &text) {
			QTest::newRow(name) << done << text;
		};
		row("nothing", {}, u"Your Short is ready."_s);
		row("empty list", {{u"formatted"_s, QJsonArray()}}, u"Your Short is ready."_s);
		row("not a list", {{u"formatted"_s, u"a.mp4"_s}}, u"Your Short is ready."_s);
		row("a path", {{u"formatted"_s, QJsonArray{u"/s/x/a.mp4"_s}}}, u"Your Short is ready: a.mp4"_s);
		row("the first of two", {{u"formatted"_s, QJsonArray{u"/a.mp4"_s, u"/b.mp4"_s}}},
		    u"Your Short is ready: a.mp4"_s);
		row("not a string", {{u"formatted"_s, QJsonArray{1}}}, u"Your Short is ready: "_s);
		row("a note", {{u"formatted"_s, QJsonArray{u"a.mp4"_s}}, {u"note"_s, u"uploading"_s}},
		    u"Your Short is ready: a.mp4 (uploading)"_s);
		row("a note alone", {{u"note"_s, u"%1"_s}}, u"Your Short is ready. (%1)"_s);
		row("an empty note", {{u"note"_s, QString()}}, u"Your Short is ready."_s);
		row("a note that is no string", {{u"note"_s, true}}, u"Your Short is ready."_s);
		row("placeholders in a name", {{u"formatted"_s, QJsonArray{u"/s/%1 %2.mp4"_s}}, {u"note"_s, u"n"_s}},
		    u"Your Short is ready: %1 %2.mp4 (n)"_s);
	}
	void readyText()
	{
		QFETCH(QJsonObject, done);
		QFETCH(QString, text);
		QCOMPARE(::readyText(done), text);
	}

	void savingText()
	{
		QCOMPARE(::savingText(u"Last 30 s"_s), u"Saving the last 30 s…"_s);
		QCOMPARE(::savingText(u"Last 120 s"_s), u"Saving the last 120 s…"_s);
		QCOMPARE(::savingText(QString()), u"Saving the last …"_s);
	}

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

KESTRUNE_TEST(ClipDecisionsTest)
#include "decisions.moc"
