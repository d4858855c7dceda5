#include <QDir>
#include <QLabel>

#include "host/dock_test.hpp"
#include "host/system.hpp"

/// Where the module looks for the helper, from its log line at load.
class HelperLocatorTest : public DockTest {
	Q_OBJECT

	QString loggedHelper() const
	{
		const QString start = u"[kestrune] Kestrune loaded (version " KESTRUNE_VERSION "), helper: "_s;
		const QList<LogLine> lines = obs().moduleLog();
		return lines.isEmpty() || !lines.front().text.startsWith(start) ? u"(no load line)"_s
										: lines.front().text.mid(start.size());
	}

	void addFile(const QString &path) const
	{
		QDir().mkpath(QFileInfo(path).absolutePath());
		QFile file(path);
		QVERIFY(file.open(QIODevice::WriteOnly));
	}

private Q_SLOTS:
	void cleanup()
	{
		qunsetenv("LOCALAPPDATA");
		DockTest::cleanup();
	}

	void overrideWinsEvenIfMissing()
	{
		addFile(scratchPath(u"helper/Kestrune.exe"_s));
		qputenv("KESTRUNE_HELPER", "/nowhere/a helper");
		QVERIFY(load());
		QCOMPARE(loggedHelper(), u"/nowhere/a helper"_s);
	}

	void helperBesideTheModuleIsNext()
	{
		addFile(scratchPath(u"helper/Kestrune.exe"_s));
		qunsetenv("KESTRUNE_HELPER");
		qputenv("LOCALAPPDATA", "/local");
		QVERIFY(load());
		QCOMPARE(loggedHelper(), scratchPath(u"helper/Kestrune.exe"_s));
	}

	void emptyOverrideCountsAsNone()
	{
		addFile(scratchPath(u"helper/Kestrune.exe"_s));
		qputenv("KESTRUNE_HELPER", "");
		QVERIFY(load());
		QCOMPARE(loggedHelper(), scratchPath(u"helper/Kestrune.exe"_s));
	}

	void perUserInstallIsLastEvenIfMissing()
	{
		qunsetenv("KESTRUNE_HELPER");
		setEnvironment("LOCALAPPDATA", u"/home/ä/Local"_s);
		QVERIFY(load());
		QCOMPARE(loggedHelper(), u"/home/ä/Local/Programs/Kestrune/Kestrune.exe"_s);
	}

	void withoutAFolderForUsersThePathIsRelative()
	{
		qunsetenv("KESTRUNE_HELPER");
		qunsetenv("LOCALAPPDATA");
		QVERIFY(load());
		QCOMPARE(loggedHelper(), QDir(QString()).filePath(u"Programs/Kestrune/Kestrune.exe"_s));
	}

	void everyRunLooksAgain()
	{
		const QByteArray fake = qgetenv("KESTRUNE_HELPER");
		qputenv("KESTRUNE_HELPER", "/nowhere");
		QVERIFY(load());
		invoke("refreshRecent");
		QVERIFY(status()->text().startsWith(u"Kestrune helper missing."));

		qputenv("KESTRUNE_HELPER", fake);
		invoke("refreshRecent");
		QTRY_COMPARE(helper().count(u"--recent"_s), 1);
	}
};

KESTRUNE_TEST(HelperLocatorTest)
#include "helper_locator.moc"
