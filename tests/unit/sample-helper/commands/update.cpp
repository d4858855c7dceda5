#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>

#include "host/test_program.hpp"
#include "sandbox.hpp"
#include "videos.hpp"

using namespace Qt::StringLiterals;

class UpdateTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void offersNothingWithoutARelease();
	void offersAnotherVersion();
	void offersNothingWhenUpToDate();
	void refusesAReleaseItCannotUse_data();
	void refusesAReleaseItCannotUse();
	void downloadsWithProgress();
	void takesItsTime();
	void checksTheChecksum();
	void keepsTheInstallerWhereNobodyElseCanWrite();
	void reportsAMissingInstaller();
	void reportsADiskThatRefusesTheDownload();
	void installsWithTheUpdateRunner();
	void failsWithTheUpdateRunner_data();
	void failsWithTheUpdateRunner();
};

namespace {
const QStringList checkSwitch{u"--check-update"_s};
const QStringList downloadSwitch{u"--download-update"_s};
const QByteArray installerText = R"({"version": "9.1.0", "text": "a sample installer with a few bytes to copy"})";
const QJsonObject noUpdate{{u"event"_s, u"update"_s}, {u"update"_s, false}};

/// Offers a release; SUM in its description stands for the installer's checksum.
void offer(
	const Sandbox &sandbox,
	const QByteArray &release =
		R"({"version": "9.1.0", "notes": "Faster & \"better\"", "installer": "setup 9.json", "sha256": "SUM"})",
	const QByteArray &installer = installerText)
{
	const QByteArray sum = videos::checksum(sandbox.writeFile(u"updates/setup 9.json"_s, installer));
	sandbox.writeFile(u"updates/release.json"_s, QByteArray(release).replace("SUM", sum));
}

QByteArray contentOf(const QString &path)
{
	QFile file(path);
	return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}
} // namespace

void UpdateTest::offersNothingWithoutARelease()
{
	const Sandbox sandbox;
	for (const QStringList &arguments : {checkSwitch, downloadSwitch}) {
		const Run run = sandbox.run(arguments);
		QCOMPARE(run.exitCode, 0);
		QCOMPARE(run.onlyEvent(), noUpdate);
	}
}

void UpdateTest::offersAnotherVersion()
{
	const Sandbox sandbox;
	offer(sandbox);
	const QJsonObject expected{{u"event"_s, u"update"_s},
				   {u"update"_s, true},
				   {u"latest"_s, u"9.1.0"_s},
				   {u"notes"_s, u"Faster & \"better\""_s}};
	QCOMPARE(sandbox.run(checkSwitch).onlyEvent(), expected);
}

void UpdateTest::offersNothingWhenUpToDate()
{
	Sandbox sandbox;
	offer(sandbox);
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_CURRENT_VERSION"_s, u"9.1.0"_s);
	QCOMPARE(sandbox.run(checkSwitch).onlyEvent(), noUpdate);
	QCOMPARE(sandbox.run(downloadSwitch).onlyEvent(), noUpdate);
	const Sandbox own;
	offer(own, R"({"version": ")" SAMPLE_HELPER_VERSION R"(", "installer": "setup 9.json", "sha256": "SUM"})");
	QCOMPARE(own.run(checkSwitch).onlyEvent(), noUpdate);
}

void UpdateTest::refusesAReleaseItCannotUse_data()
{
	QTest::addColumn<QByteArray>("release");
	QTest::addColumn<QString>("text");
	const QString noVersion = u"names no version"_s;
	QTest::newRow("no JSON") << QByteArray("version 9") << noVersion;
	QTest::newRow("no version") << QByteArray(R"({"installer": "setup 9.json"})") << noVersion;
	QTest::newRow("version with markup")
		<< QByteArray(R"({"version": "<b>9", "installer": "setup 9.json", "sha256": "SUM"})") << noVersion;
	QTest::newRow("no installer") << QByteArray(R"({"version": "9.1.0"})") << noVersion;
	QTest::newRow("outside") << QByteArray(R"({"version": "9.1.0", "installer": "../chat.json"})") << noVersion;
	QTest::newRow("outside, Windows")
		<< QByteArray(R"({"version": "9.1.0", "installer": "..\\chat.json"})") << noVersion;
	QTest::newRow("parent folder") << QByteArray(R"({"version": "9.1.0", "installer": ".."})") << noVersion;
	const QString noChecksum = u"gives no sha256"_s;
	QTest::newRow("no checksum") << QByteArray(R"({"version": "9.1.0", "installer": "setup 9.json"})")
				     << noChecksum;
	QTest::newRow("half a checksum")
		<< QByteArray(R"({"version": "9.1.0", "installer": "setup 9.json", "sha256": "00"})") << noChecksum;
}

void UpdateTest::refusesAReleaseItCannotUse()
{
	QFETCH(const QByteArray, release);
	QFETCH(const QString, text);
	const Sandbox sandbox;
	offer(sandbox, release);
	for (const QStringList &arguments : {checkSwitch, downloadSwitch}) {
		const Run run = sandbox.run(arguments);
		QCOMPARE(run.exitCode, 1);
		QVERIFY(run.onlyEvent()[u"error"].toString().contains(text));
	}
}

void UpdateTest::downloadsWithProgress()
{
	const Sandbox sandbox;
	offer(sandbox);
	const Run run = sandbox.run(downloadSwitch);
	QCOMPARE(run.exitCode, 0);
	QVERIFY(run.events.size() > 5);
	int percent = 0;
	for (const QJsonObject &event : run.events.first(run.events.size() - 1)) {
		QCOMPARE(event[u"event"].toString(), u"progress"_s);
		QCOMPARE(event[u"phase"].toString(), u"download"_s);
		QVERIFY(event[u"percent"].toInt() > percent);
		percent = event[u"percent"].toInt();
	}
	QCOMPARE(percent, 100);
	const QJsonObject last = run.events.last();
	QCOMPARE(last[u"event"].toString(), u"downloaded"_s);
	QCOMPARE(last[u"latest"].toString(), u"9.1.0"_s);
	QCOMPARE(last[u"path"].toString(), sandbox.path(u"downloads/setup 9.json"_s));
	QCOMPARE(contentOf(last[u"path"].toString()), installerText);
}

void UpdateTest::takesItsTime()
{
	Sandbox sandbox;
	offer(sandbox);
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_DOWNLOAD_MS"_s, u"400"_s);
	QElapsedTimer timer;
	timer.start();
	QCOMPARE(sandbox.run(downloadSwitch).exitCode, 0);
	QVERIFY(timer.elapsed() >= 350);
}

void UpdateTest::checksTheChecksum()
{
	const Sandbox sandbox;
	offer(sandbox);
	// Somebody else's in its place.
	sandbox.writeFile(u"updates/setup 9.json"_s, "another installer");
	const Run bad = sandbox.run(downloadSwitch);
	QCOMPARE(bad.exitCode, 1);
	QCOMPARE(bad.events.last()[u"error"].toString(), u"the downloaded installer is damaged."_s);
	QCOMPARE(QDir(sandbox.path(u"downloads"_s)).entryList(QDir::Files).size(), 0);

	const QByteArray sum = videos::checksum(sandbox.path(u"updates/setup 9.json"_s)).toUpper();
	offer(sandbox, R"({"version": "9.1.0", "installer": "setup 9.json", "sha256": ")" + sum + "\"}",
	      "another installer");
	QCOMPARE(sandbox.run(downloadSwitch).exitCode, 0);
}

void UpdateTest::keepsTheInstallerWhereNobodyElseCanWrite()
{
#ifdef Q_OS_WIN
	QSKIP("The user's data folder is closed to others there.");
#endif
	const Sandbox sandbox;
	offer(sandbox);
	const QString folder = sandbox.path(u"downloads"_s);
	QVERIFY(QDir().mkpath(folder));
	const QFile::Permissions all = QFile::Permissions::fromInt(0x7777);
	QVERIFY(QFile::setPermissions(folder, all));
	QCOMPARE(sandbox.run(downloadSwitch).exitCode, 0);
	const QFile::Permissions others = QFile::permissions(folder) & QFile::Permissions::fromInt(0x0077);
	QCOMPARE(others.toInt(), 0);
}

void UpdateTest::reportsAMissingInstaller()
{
	const Sandbox sandbox;
	offer(sandbox, R"({"version": "9.1.0", "installer": "gone.json", "sha256": "SUM"})");
	const Run run = sandbox.run(downloadSwitch);
	QCOMPARE(run.exitCode, 1);
	QVERIFY(run.onlyEvent()[u"error"].toString().contains(u"is missing or empty"_s));
}

void UpdateTest::reportsADiskThatRefusesTheDownload()
{
#ifdef Q_OS_WIN
	QSKIP("there is no shell to limit file sizes");
#endif
	const Sandbox sandbox;
	offer(sandbox, R"({"version": "9.1.0", "installer": "setup 9.json", "sha256": "SUM"})",
	      QByteArray(200'000, 'x'));
	const Run run = sandbox.runProgram(u"sh"_s, {u"-c"_s, u"trap '' XFSZ; ulimit -f 64; exec \"$@\""_s, u"sh"_s,
						     sampleHelper(), downloadSwitch.first()});
	QCOMPARE(run.exitCode, 1);
	const QString text = run.events.last()[u"error"].toString();
	QCOMPARE(text, u"couldn't save the installer in %1: the disk is full."_s.arg(sandbox.path(u"downloads"_s)));
	QCOMPARE(QDir(sandbox.path(u"downloads"_s)).entryList(QDir::Files).size(), 0);
}

void UpdateTest::installsWithTheUpdateRunner()
{
	Sandbox sandbox;
	const QString installer = sandbox.writeFile(u"setup ü.json"_s, installerText);
	const QString manifest = sandbox.writeFile(u"manifest.json"_s, R"({"version":"1.0.0","name":"x"})");
	sandbox.setVariable(u"KESTRUNE_MANIFEST"_s, manifest);
	QCOMPARE(sandbox.runProgram(fakeUpdateRunner(), {installer}).exitCode, 0);
	QVERIFY(contentOf(manifest).contains("\"version\": \"9.1.0\""));
	QVERIFY(contentOf(manifest).contains("\"name\": \"x\""));
}

void UpdateTest::failsWithTheUpdateRunner_data()
{
	QTest::addColumn<QByteArray>("installer");
	QTest::addColumn<int>("exitCode");
	QTest::newRow("exit code") << QByteArray(R"({"version": "9.1.0", "exit": 3})") << 3;
	QTest::newRow("crash") << QByteArray(R"({"version": "9.1.0", "crash": true})") << -1;
	QTest::newRow("nothing changed") << QByteArray(R"({"version": "9.1.0", "keep": true})") << 0;
	QTest::newRow("no installer at all") << QByteArray("MZ") << 2;
}

void UpdateTest::failsWithTheUpdateRunner()
{
	QFETCH(const QByteArray, installer);
	QFETCH(const int, exitCode);
	Sandbox sandbox;
	const QByteArray before = R"({"version":"1.0.0"})";
	const QString manifest = sandbox.writeFile(u"manifest.json"_s, before);
	sandbox.setVariable(u"KESTRUNE_MANIFEST"_s, manifest);
	const QString path = sandbox.writeFile(u"setup.json"_s, installer);
	QCOMPARE(sandbox.runProgram(fakeUpdateRunner(), {path}).exitCode, exitCode);
	QCOMPARE(contentOf(manifest), before);
}

KESTRUNE_TEST(UpdateTest)
#include "update.moc"
