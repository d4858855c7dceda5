#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

#include "host/imports_windows.hpp"
#include "host/update_test.hpp"

#include <algorithm>

namespace {
qint64 aQuarterOfAnHour(const QElapsedTimer *)
{
	return 15 * 60 * 1000 + 1;
}
} // namespace

/// A real elevated start of a fake installer.
class ElevatedInstallerTest : public UpdateTest {
	Q_OBJECT

	const QString installing_ = u"Installing v1.0.7… (approve the Windows prompt)"_s;

	void write(const QString &path, const QByteArray &text) const
	{
		QFile file(path);
		QVERIFY(file.open(QIODevice::WriteOnly));
		file.write(text);
	}

	/// Makes an installer that exits with this code.
	QString installer(const QString &name, quint32 code = 0) const
	{
		const QString path = scratchPath(name);
		QDir().mkpath(QFileInfo(path).absolutePath());
		if (!QFile::copy(u"" FAKE_INSTALLER ""_s, path)) {
			qFatal("cannot write %s", qUtf8Printable(path));
		}
		write(path + u".code"_s, QByteArray::number(code));
		return path;
	}

	/// How the installer was called: show-window value and command line.
	QStringList call(const QString &installerPath) const
	{
		QFile file(installerPath + u".called"_s);
		if (!file.open(QIODevice::ReadOnly)) {
			return {};
		}
		const QByteArray bytes = file.readAll();
		return QString::fromUtf16(reinterpret_cast<const char16_t *>(bytes.constData()), bytes.size() / 2)
			.split(u'\n');
	}

	bool run(const QString &path) const
	{
		return QMetaObject::invokeMethod(dock(), "runInstaller", Qt::DirectConnection, path);
	}

	/// Waits: Windows refuses to remove running programs and open files.
	static bool removed(const QString &path)
	{
		return QTest::qWaitFor([&path] { return QFile::remove(path); }, patience_ms);
	}

	bool installerIsWatched() const
	{
		const QList<QTimer *> timers = dock()->findChildren<QTimer *>(Qt::FindDirectChildrenOnly);
		return std::ranges::any_of(
			timers, [](const QTimer *timer) { return timer->interval() == 500 && timer->isActive(); });
	}

private Q_SLOTS:
	void init()
	{
		UpdateTest::init();
		qputenv("KESTRUNE_MANIFEST", scratchPath(u"manifest.json"_s).toUtf8());
		QVERIFY(loadOffered());
	}
	void cleanup()
	{
		UpdateTest::cleanup();
		qunsetenv("KESTRUNE_MANIFEST");
	}

	void theInstallerGetsItsSwitchesAndNoWindow_data()
	{
		QTest::addColumn<QString>("name");
		QTest::newRow("plain") << u"Setup.exe"_s;
		QTest::newRow("blanks") << u"Neuer Ordner/Kestrune Setup 1.0.7.exe"_s;
		QTest::newRow("foreign letters") << u"録画 🎬/Kestrüne Setup.exe"_s;
		QTest::newRow("percent sign") << u"100% %PATH%/Setup.exe"_s;
	}
	void theInstallerGetsItsSwitchesAndNoWindow()
	{
		QFETCH(QString, name);
		const QString path = installer(name);
		write(scratchPath(u"manifest.json"_s), "{\"version\": \"1.0.7\"}");

		QVERIFY(run(path));
		QVERIFY(showsStep(installing_));
		QVERIFY(installerIsWatched());
		QTRY_VERIFY(showsStep(u"Update installed (v1.0.7). Restart OBS to finish."_s));
		QVERIFY(!installerIsWatched());

		const QStringList called = call(path);
		QCOMPARE(called.size(), 2);
		QCOMPARE(called[0], u"0"_s);
		const QString switches = u"/VERYSILENT /SUPPRESSMSGBOXES /NORESTART /NOCLOSEAPPLICATIONS /SP-"_s;
		const QString program = QDir::toNativeSeparators(path);
		QVERIFY2(called[1] == u'"' + program + u"\" "_s + switches || called[1] == program + u' ' + switches,
			 qPrintable(called[1]));
	}

	void theExitCodeIsReported_data()
	{
		QTest::addColumn<quint32>("code");
		QTest::addColumn<QString>("shown");
		QTest::newRow("1") << 1U << u"1"_s;
		QTest::newRow("restart wanted") << 3010U << u"3010"_s;
		QTest::newRow("access violation") << 0xC0000005U << u"-1073741819"_s;
		// STILL_ACTIVE, "still running" for GetExitCodeProcess.
		QTest::newRow("259") << 259U << u"259"_s;
	}
	void theExitCodeIsReported()
	{
		QFETCH(quint32, code);
		QFETCH(QString, shown);
		write(scratchPath(u"manifest.json"_s), "{\"version\": \"1.0.7\"}");
		QVERIFY(run(installer(u"Setup.exe"_s, code)));
		QTRY_VERIFY(showsError(u"Update failed: the installer exited with code %1. Nothing changed until it "
				       u"succeeds. Retry update"_s.arg(shown)));
		QVERIFY(!installerIsWatched());
	}

	void successAloneIsNotEnough()
	{
		write(scratchPath(u"manifest.json"_s), "{\"version\": \"1.0.6\"}");
		QVERIFY(run(installer(u"Setup.exe"_s)));
		QTRY_VERIFY(showsError(
			u"Update failed: the installer finished but v1.0.6 is still installed. Retry update"_s));
	}

	void theDockStaysUsableWhileTheInstallerWorks()
	{
		const QString path = installer(u"Setup.exe"_s);
		write(path + u".wait"_s, {});
		write(scratchPath(u"manifest.json"_s), "{\"version\": \"1.0.7\"}");
		QVERIFY(run(path));
		QTRY_VERIFY(!call(path).isEmpty());
		QTest::qWait(1200); // two polls
		QVERIFY(showsStep(installing_));
		QVERIFY(installerIsWatched());

		QVERIFY(removed(path + u".wait"_s));
		QTRY_VERIFY(showsStep(u"Update installed (v1.0.7). Restart OBS to finish."_s));
	}

	void theInstallerMayOutliveTheDock()
	{
		const QString path = installer(u"Setup.exe"_s);
		write(path + u".wait"_s, {});
		QVERIFY(run(path));
		QTRY_VERIFY(!call(path).isEmpty());
		takeStates();
		destroyMainWindow();
		QVERIFY(takeStates().isEmpty());
		// A running program cannot be removed.
		QVERIFY(!QFile::remove(path));
		QVERIFY(removed(path + u".wait"_s));
		QVERIFY(removed(path));
	}

	void theInstallerStartedLastCounts()
	{
		const QString first = installer(u"First.exe"_s, 1);
		write(first + u".wait"_s, {});
		write(scratchPath(u"manifest.json"_s), "{\"version\": \"1.0.7\"}");
		QVERIFY(run(first));
		QTRY_VERIFY(!call(first).isEmpty());
		QVERIFY(run(installer(u"Second.exe"_s)));
		QTRY_VERIFY(showsStep(u"Update installed (v1.0.7). Restart OBS to finish."_s));

		takeStates();
		QVERIFY(removed(first + u".wait"_s));
		QVERIFY(removed(first)); // it has ended, with a failure
		QTest::qWait(1200);
		QCOMPARE(takeStates(), QStringList());
	}

	void anInstallerThatTakesTooLongIsLeftAlone()
	{
		const QString path = installer(u"Setup.exe"_s);
		write(path + u".wait"_s, {});
		QVERIFY(run(path));
		QTRY_VERIFY(!call(path).isEmpty());
		// For the module it is a quarter of an hour later now.
		const RedirectedImport clock(GetModuleHandleW(L"kestrune"), "Qt6Core.dll",
					     "_ZNK13QElapsedTimer7elapsedEv", &aQuarterOfAnHour);
		QTRY_VERIFY(
			showsError(u"Update failed: the installer didn't finish within 15 minutes. Retry update"_s));
		QVERIFY(!installerIsWatched());
		// It still runs.
		QVERIFY(!QFile::remove(path));
		QVERIFY(removed(path + u".wait"_s));
		QVERIFY(removed(path));
	}

	void aMissingInstallerIsReported()
	{
		QVERIFY(run(scratchPath(u"Setup.exe"_s)));
		QVERIFY(showsError(u"Update failed: couldn't start the installer (error 2). Retry update"_s));
		QVERIFY(!installerIsWatched());
	}

	void aFileThatIsNoProgramIsReported()
	{
		const QString path = scratchPath(u"Setup.exe"_s);
		write(path, "<html>Not found</html>");
		QVERIFY(run(path));
		QVERIFY2(updateButton()->text().startsWith(u"Update failed: couldn't start the installer (error "),
			 qPrintable(updateButton()->text()));
		QVERIFY(!updateButton()->text().contains(u"(error 0)"));
		QVERIFY(showsError(updateButton()->text()));
		QVERIFY(!installerIsWatched());
	}
};

KESTRUNE_TEST(ElevatedInstallerTest)
#include "elevated_installer.moc"
