#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>

#include "host/dock_test.hpp"
#include "host/system.hpp"

#include <windows.h>

/// Helper runs on Windows: hidden window, single command line, path characters, inherited handles.
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
		if (!QTest::qWaitFor([this] { return helper().count(u"--process"_s) == 1; }, patience_ms)) {
			return u"no run"_s;
		}
		return helper().runs(u"--process"_s).front().value(1);
	}

	/// How many windows of this process a user sees.
	static int visibleWindows(qint64 processId)
	{
		std::pair<DWORD, int> search{static_cast<DWORD>(processId), 0};
		EnumWindows(
			[](HWND window, LPARAM found) -> BOOL {
				auto &[owner, count] = *reinterpret_cast<std::pair<DWORD, int> *>(found);
				DWORD process = 0;
				GetWindowThreadProcessId(window, &process);
				count += process == owner && IsWindowVisible(window) ? 1 : 0;
				return TRUE;
			},
			reinterpret_cast<LPARAM>(&search));
		return search.second;
	}

private Q_SLOTS:
	void runsHaveNoConsoleAndAHiddenWindow()
	{
		QVERIFY(load());
		invoke("refreshRecent");
		QTRY_COMPARE(helper().count(u"--recent"_s), 1);
		const QJsonObject run = helper().records(u"--recent"_s).front();
		QCOMPARE(run[u"console"], QJsonValue(false));
		QCOMPARE(run[u"showWindowSet"], QJsonValue(true));
		QCOMPARE(run[u"showWindow"], QJsonValue(0));
	}

	void noWindowIsSeenWhileARunLasts()
	{
		helper().on(u"--recent"_s, HelperScript().hang());
		QVERIFY(load());
		QVERIFY(visibleWindows(QCoreApplication::applicationPid()) > 0);
		invoke("refreshRecent");
		QTRY_COMPARE(helper().count(u"--recent"_s), 1);
		QCOMPARE(visibleWindows(helper().processIds(u"--recent"_s).front()), 0);
	}

	void runsInheritTheirThreeStreamsAndNothingElse()
	{
		HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr); // as almost all of OBS's handles
		setEnvironment("FAKE_HELPER_HANDLE", QString::number(reinterpret_cast<quintptr>(event)));
		QVERIFY(load());
		invoke("refreshRecent");
		QTRY_COMPARE(helper().count(u"--recent"_s), 1);
		const QJsonObject run = helper().records(u"--recent"_s).front();
		QCOMPARE(run[u"input"].toInt(), FILE_TYPE_PIPE);
		QCOMPARE(run[u"output"].toInt(), FILE_TYPE_PIPE);
		QCOMPARE(run[u"error"].toInt(), FILE_TYPE_CHAR); // where everything vanishes
		QCOMPARE(run[u"otherHandle"], QJsonValue(false));
		CloseHandle(event);
		qunsetenv("FAKE_HELPER_HANDLE");
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
		QTRY_COMPARE(list->count(), 2);
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
		QTest::newRow("longer than 260 letters") << u"C:/Videos/"_s + QString(300, u'ü') + u"/Replay.mkv"_s;
		QTest::newRow("as long as Windows takes") << u"C:/"_s + QString(30000, u'x') + u".mkv"_s;
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
		QTRY_COMPARE(helper().count(u"--recent"_s), 1);
	}

	void aHelperOnAShareThatIsGoneIsMissing()
	{
		setEnvironment("KESTRUNE_HELPER", u"\\\\no-such-server\\share\\Kestrune.exe"_s);
		QVERIFY(load());
		invoke("refreshRecent");
		TRY_STATUS(u"Kestrune helper missing. Reinstall from " KESTRUNE_WEBSITE "/addons"_s, errorColour);
	}

	void clipsOnAShareAreOpened()
	{
		helper().on(u"--recent"_s,
			    HelperScript().event(
				    {{u"event"_s, u"recent"_s},
				     {u"folder"_s, u"\\\\nas\\clips"_s},
				     {u"items"_s,
				      QJsonArray{QJsonObject{{u"name"_s, u"a"_s},
							     {u"path"_s, u"\\\\nas\\clips\\größe 1.mp4"_s}}}}}));
		QVERIFY(load());
		auto *list = dock()->findChild<QListWidget *>();
		invoke("refreshRecent");
		QTRY_COMPARE(list->count(), 1);
		QTRY_COMPARE(list->item(0)->text(), u"a"_s);
		Q_EMIT list->itemDoubleClicked(list->item(0));
		button(u"Open output folder"_s)->click();
		QCOMPARE(openedUrls(), QList({QUrl(u"file://nas/clips/größe 1.mp4"_s), QUrl(u"file://nas/clips"_s)}));
	}

	void theHelperBesideTheModuleIsFound()
	{
		const QString path = scratchPath(u"helper/Kestrune.exe"_s);
		QDir().mkpath(QFileInfo(path).absolutePath());
		QVERIFY(QFile::copy(qEnvironmentVariable("KESTRUNE_HELPER"), path));
		qunsetenv("KESTRUNE_HELPER");
		QVERIFY(load());
		invoke("refreshRecent");
		QTRY_COMPARE(helper().count(u"--recent"_s), 1);
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
		QTRY_COMPARE(helper().count(u"--recent"_s), 1);
		setEnvironment("LOCALAPPDATA", before);
	}
};

KESTRUNE_TEST(HiddenRunsTest)
#include "hidden_runs.moc"
