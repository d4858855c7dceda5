#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTimer>

#include "host/update_test.hpp"

#include <algorithm>

/// From the downloaded installer to the installed version, with a runner program instead of the elevated installer.
class InstallerTest : public UpdateTest {
	Q_OBJECT

	const QString installing_ = u"Installing v1.0.7… (approve the Windows prompt)"_s;

	QString manifestPath() const { return scratchPath(u"manifest.json"_s); }
	void writeManifest(const QByteArray &text) const
	{
		QFile file(manifestPath());
		QVERIFY(file.open(QIODevice::WriteOnly));
		file.write(text);
	}
	bool runInstaller(const QString &path) const
	{
		return QMetaObject::invokeMethod(dock(), "runInstaller", Qt::DirectConnection, Q_ARG(QString, path));
	}
	void finish(int exitCode) const
	{
		QVERIFY(QMetaObject::invokeMethod(dock(), "installerFinished", Qt::DirectConnection,
						  Q_ARG(int, exitCode)));
	}
	QTimer *installerTimer() const
	{
		const QList<QTimer *> timers = dock()->findChildren<QTimer *>(Qt::FindDirectChildrenOnly);
		const auto found =
			std::ranges::find_if(timers, [](const QTimer *timer) { return timer->interval() == 500; });
		return found == timers.end() ? nullptr : *found;
	}
	/// The fake helper is the runner, too: the installer's path, its first argument, selects the script "--runner".
	void useRunner(const HelperScript &script)
	{
		qputenv("KESTRUNE_UPDATE_RUNNER", qgetenv("KESTRUNE_HELPER"));
		helper().on(u"--runner"_s, script);
	}

private Q_SLOTS:
	void init()
	{
		DockTest::init();
		qputenv("KESTRUNE_MANIFEST", manifestPath().toUtf8());
	}
	void cleanup()
	{
		DockTest::cleanup();
		qunsetenv("KESTRUNE_MANIFEST");
		qunsetenv("KESTRUNE_UPDATE_RUNNER");
	}

	void aDownloadLeadsToTheRunner()
	{
		useRunner(HelperScript().await(u"end"_s));
		QVERIFY(loadOffered());
		helper().on(u"--download-update"_s,
			    HelperScript().event({{u"event"_s, u"downloaded"_s}, {u"path"_s, u"--runner"_s}}));
		click();
		QTRY_VERIFY(showsStep(installing_));
		QTRY_COMPARE(helper().runs(u"--runner"_s), QList<QStringList>({{u"--runner"_s}}));
		QTRY_VERIFY(!isRunning(u"--download-update"_s));
		QVERIFY(showsStep(installing_));

		click();
		invoke("installUpdate");
		invoke("checkUpdate");
		QVERIFY(!isRunning(u"--download-update"_s));
		QVERIFY(!isRunning(u"--check-update"_s));

		writeManifest("{\"version\": \"1.0.7\"}");
		helper().open(u"end"_s);
		QTRY_VERIFY(showsStep(u"Update installed (v1.0.7). Restart OBS to finish."_s));
		QTRY_VERIFY(!isRunning(u"--runner"_s));
		QCOMPARE(takeStates().last(), u"done: Update installed (v1.0.7). Restart OBS to finish."_s);

		invoke("installUpdate");
		invoke("checkUpdate");
		QVERIFY(dock()->findChildren<QProcess *>().isEmpty() || !isRunning(u"--check-update"_s));
		QVERIFY(!isRunning(u"--download-update"_s));
	}

	void theDownloadMayNameAnotherVersion_data()
	{
		QTest::addColumn<QJsonValue>("latest");
		QTest::addColumn<QString>("version");
		QTest::newRow("another") << QJsonValue(u"1.0.9"_s) << u"1.0.9"_s;
		QTest::newRow("empty") << QJsonValue(u""_s) << u"1.0.7"_s;
		QTest::newRow("of another type") << QJsonValue(9) << u"1.0.7"_s;
	}
	void theDownloadMayNameAnotherVersion()
	{
		QFETCH(QJsonValue, latest);
		QFETCH(QString, version);
		useRunner(HelperScript().hang());
		QVERIFY(loadOffered());
		helper().on(u"--download-update"_s, HelperScript().event({{u"event"_s, u"downloaded"_s},
									  {u"latest"_s, latest},
									  {u"path"_s, u"--runner"_s}}));
		click();
		QTRY_VERIFY(showsStep(u"Installing v%1… (approve the Windows prompt)"_s.arg(version)));
	}

	void aCrashedRunnerCountsAsMinusOne()
	{
		useRunner(HelperScript().crash());
		QVERIFY(loadOffered());
		QVERIFY(runInstaller(u"--runner"_s));
		TRY_ERROR(u"Update failed: the installer exited with code -1. Nothing changed until it succeeds. "
			  u"Retry update"_s);
	}

	void aRunnersExitCodeIsReported()
	{
		useRunner(HelperScript().exit(7));
		QVERIFY(loadOffered());
		QVERIFY(runInstaller(u"--runner"_s));
		TRY_ERROR(u"Update failed: the installer exited with code 7. Nothing changed until it succeeds. "
			  u"Retry update"_s);
	}

	void aRunnerThatCannotStartIsReported()
	{
		qputenv("KESTRUNE_UPDATE_RUNNER", scratchPath(u"no such program"_s).toUtf8());
		QVERIFY(loadOffered());
		QVERIFY(runInstaller(u"C:/setup.exe"_s));
		TRY_ERROR(u"Update failed: couldn't start the installer. Retry update"_s);
		QTRY_VERIFY(dock()->findChildren<QProcess *>().isEmpty());
	}

	void theRunnerGetsThePathUnchanged()
	{
		useRunner(HelperScript());
		QVERIFY(loadOffered());
		const QString path = u"C:/a b/\"Kestrune\" %1 ü.exe"_s;
		QVERIFY(runInstaller(path));
		QTRY_COMPARE(helper().runs(path), QList<QStringList>({{path}}));
	}

#ifndef Q_OS_WIN
	void thereIsNoElevatedStartHere()
	{
		QVERIFY(loadOffered());
		QVERIFY(runInstaller(u"/tmp/setup.exe"_s));
		QVERIFY(showsError(u"Update failed: couldn't start the installer (error 0). Retry update"_s));
		QCOMPARE(
			takeStates(),
			QStringList({u"installing: "_s + installing_,
				     u"error: Update failed: couldn't start the installer (error 0). Retry update"_s}));
		QVERIFY(!installerTimer()->isActive());
	}
#endif

	void aTickWithoutAnInstallerStopsTheTimer()
	{
		QVERIFY(loadOffered());
		QVERIFY(installerTimer());
		installerTimer()->start();
		invoke("pollInstaller");
		QVERIFY(!installerTimer()->isActive());
		QCOMPARE(takeStates(), QStringList());
	}

	void exitCodesOtherThanZeroFail_data()
	{
		QTest::addColumn<int>("code");
		QTest::newRow("1") << 1;
		QTest::newRow("reboot wanted") << 3010;
		QTest::newRow("access violation") << -1073741819;
	}
	void exitCodesOtherThanZeroFail()
	{
		QFETCH(int, code);
		QVERIFY(loadOffered());
		writeManifest("{\"version\": \"1.0.7\"}");
		finish(code);
		QVERIFY(showsError(
			u"Update failed: the installer exited with code %1. Nothing changed until it succeeds. "
			u"Retry update"_s.arg(code)));
	}

	void theInstalledVersionMustBeTheOfferedOne_data()
	{
		QTest::addColumn<QString>("offered");
		QTest::addColumn<QByteArray>("manifest");
		QTest::addColumn<QString>("installed");
		QTest::newRow("the old one") << u"1.0.7"_s << QByteArray("{\"version\": \"1.0.6\"}") << u"1.0.6"_s;
		QTest::newRow("a leading v") << u"1.0.7"_s << QByteArray("{\"version\": \"v1.0.7\"}") << u"v1.0.7"_s;
		QTest::newRow("a missing group") << u"1.1.0"_s << QByteArray("{\"version\": \"1.1\"}") << u"1.1"_s;
		QTest::newRow("letter case") << u"1.1-RC"_s << QByteArray("{\"version\": \"1.1-rc\"}") << u"1.1-rc"_s;
		QTest::newRow("no version") << u"1.0.7"_s << QByteArray("{}") << QString();
		QTest::newRow("not JSON") << u"1.0.7"_s << QByteArray("1.0.7") << QString();
		QTest::newRow("nothing offered, nothing installed") << QString() << QByteArray("{}") << QString();
	}
	void theInstalledVersionMustBeTheOfferedOne()
	{
		QFETCH(QString, offered);
		QFETCH(QByteArray, manifest);
		QFETCH(QString, installed);
		QVERIFY(loadOffered(offered));
		writeManifest(manifest);
		finish(0);
		QVERIFY(showsError(
			u"Update failed: the installer finished but v%1 is still installed. Retry update"_s.arg(
				installed)));
	}

	void withoutAManifestTheVersionIsUnknown()
	{
		QVERIFY(loadOffered());
		qunsetenv("KESTRUNE_MANIFEST");
		finish(0);
		QVERIFY(showsError(u"Update failed: the installer finished but v is still installed. Retry update"_s));
	}

	void readsTheManifestAmongTheModulesDataFiles()
	{
		QVERIFY(loadOffered());
		qunsetenv("KESTRUNE_MANIFEST");
		writeManifest("{\"version\": \"1.0.7\"}"); // the scratch folder is the module's data folder
		finish(0);
		QVERIFY(showsStep(u"Update installed (v1.0.7). Restart OBS to finish."_s));
	}

	void theDockMayGoWhileTheRunnerWorks()
	{
		useRunner(HelperScript().hang());
		QVERIFY(loadOffered());
		QVERIFY(runInstaller(u"--runner"_s));
		QTRY_COMPARE(helper().count(u"--runner"_s), 1);
		takeStates();
		destroyMainWindow();
		QVERIFY(!dock());
		QCOMPARE(takeStates(), QStringList());
	}
};

KESTRUNE_TEST(InstallerTest)
#include "installer.moc"
