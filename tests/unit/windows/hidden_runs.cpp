#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QProcess>

#include "host/dock_test.hpp"
#include "host/system.hpp"

/// Helper runs on Windows: hidden window, single command line, path characters.
class HiddenRunsTest : public DockTest {
	Q_OBJECT

	/// The replay path that the helper received.
	QString pathArrivingFor(const QString &replay)
	{
		if (!loadReady()) {
			return u"not ready"_s;
		}
		frontend().lastReplay = replay.toUtf8();
		invoke("clipThat");
		frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_SAVED);
		if (!QTest::qWaitFor([this] { return helper().count(u"--process"_s) == 1; }, 30000)) {
			return u"no run"_s;
		}
		return helper().runs(u"--process"_s).front().value(1);
	}

private Q_SLOTS:
	void runsHaveNoConsoleAndAHiddenWindow()
	{
		QVERIFY(load());
		invoke("refreshRecent");
		QTRY_COMPARE_WITH_TIMEOUT(helper().count(u"--recent"_s), 1, 30000);
		const QJsonObject run = helper().records(u"--recent"_s).front();
		QCOMPARE(run[u"console"], QJsonValue(false));
		QCOMPARE(run[u"showWindowSet"], QJsonValue(true));
		QCOMPARE(run[u"showWindow"], QJsonValue(0));
	}

	void linesMayEndAsWindowsEndsThem()
	{
		QVERIFY(load());
		helper().on(u"--recent"_s,
			    HelperScript().write(
				    "{\"event\":\"recent\",\"items\":[{\"name\":\"old\"}]}\r\n\r\n"
				    "{\"event\":\"recent\",\"items\":[{\"name\":\"a\"},{\"name\":\"b\"}]}\r\n"));
		const auto *list = dock()->findChild<QListWidget *>();
		invoke("refreshRecent");
		QTRY_COMPARE_WITH_TIMEOUT(list->count(), 2, 30000);
		QCOMPARE(list->item(1)->text(), u"b"_s);
	}

	void argumentsArriveUnchanged_data()
	{
		QTest::addColumn<QString>("replay");
		QTest::newRow("blanks") << u"C:/My Videos/Replay 2026-01-02 03-04-05.mkv"_s;
		QTest::newRow("quotes") << u"C:/a \"quoted\" name.mkv"_s;
		QTest::newRow("one quote") << u"\"C:/x.mkv"_s;
		QTest::newRow("backslashes") << u"C:\\Videos\\Replay.mkv"_s;
		QTest::newRow("backslash before a quote") << u"C:\\dir\\\"x\\\\\" y"_s;
		QTest::newRow("backslash at the end") << u"C:\\my dir\\"_s;
		QTest::newRow("share") << u"\\\\server\\share name\\x.mkv"_s;
		QTest::newRow("shell letters") << u"C:/100% ^&|<>!(x);'`.mkv"_s;
		QTest::newRow("German") << u"C:/Aufnahmen/Größe übers Maß.mkv"_s;
		QTest::newRow("Japanese") << u"C:/録画/リプレイ 名場面.mkv"_s;
		QTest::newRow("emoji") << u"C:/clips 🎬/👩‍🚀🔥.mkv"_s;
		QTest::newRow("switch") << u"--seconds"_s;
	}
	void argumentsArriveUnchanged()
	{
		QFETCH(QString, replay);
		QCOMPARE(pathArrivingFor(replay), replay);
	}

	void theHelperMayBeInAnyFolder()
	{
		const QString path = scratchPath(u"ヘルパー 🎬 für alle/Kestrune.exe"_s);
		QDir().mkpath(QFileInfo(path).absolutePath());
		QVERIFY(QFile::copy(qEnvironmentVariable("KESTRUNE_HELPER"), path));
		setEnvironment("KESTRUNE_HELPER", path);
		QVERIFY(load());
		QVERIFY(obs().moduleLog().front().text.endsWith(u"helper: "_s + path));
		invoke("refreshRecent");
		QTRY_COMPARE_WITH_TIMEOUT(helper().count(u"--recent"_s), 1, 30000);
	}

	void theHelperBesideTheModuleIsFound()
	{
		const QString path = scratchPath(u"helper/Kestrune.exe"_s);
		QDir().mkpath(QFileInfo(path).absolutePath());
		QVERIFY(QFile::copy(qEnvironmentVariable("KESTRUNE_HELPER"), path));
		qunsetenv("KESTRUNE_HELPER");
		QVERIFY(load());
		invoke("refreshRecent");
		QTRY_COMPARE_WITH_TIMEOUT(helper().count(u"--recent"_s), 1, 30000);
	}

	void theHelperInstalledForOneUserIsFound()
	{
		const QString programs = scratchPath(u"Benutzer 田中"_s);
		const QString path = programs + u"/Programs/Kestrune/Kestrune.exe"_s;
		QDir().mkpath(QFileInfo(path).absolutePath());
		QVERIFY(QFile::copy(qEnvironmentVariable("KESTRUNE_HELPER"), path));
		qunsetenv("KESTRUNE_HELPER");
		const QString before = qEnvironmentVariable("LOCALAPPDATA");
		setEnvironment("LOCALAPPDATA", programs);
		QVERIFY(load());
		invoke("refreshRecent");
		QTRY_COMPARE_WITH_TIMEOUT(helper().count(u"--recent"_s), 1, 30000);
		setEnvironment("LOCALAPPDATA", before);
	}
};

KESTRUNE_TEST(HiddenRunsTest)
#include "hidden_runs.moc"
