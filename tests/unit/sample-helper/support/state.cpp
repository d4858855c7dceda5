#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include "host/test_program.hpp"
#include "sandbox.hpp"

#ifndef Q_OS_WIN
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

/// Unusable state files are kept and logged, and never block the helper.
class StateTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void keepsWhatItCannotUse_data();
	void keepsWhatItCannotUse();
	void overwritesNothingThatItCannotRead();
	void waitsForNoPipe();
	void writesOnlyWhatChanges();
};

namespace {
const QStringList statusSwitch{u"--status"_s};

QStringList setAside(const Sandbox &sandbox)
{
	return QDir(sandbox.path()).entryList({u"account.json.damaged-*"_s}, QDir::Files);
}

bool isLinked(const Run &run)
{
	return run.onlyEvent()[u"linked"].toBool();
}
} // namespace

void StateTest::keepsWhatItCannotUse_data()
{
	QTest::addColumn<QByteArray>("content");
	QTest::addColumn<QByteArray>("told");
	QTest::newRow("cut off") << QByteArray("{\"link\": \"linked") << QByteArray("account.json is damaged; kept as");
	QTest::newRow("empty") << QByteArray("") << QByteArray("account.json is damaged; kept as");
	QTest::newRow("another kind") << QByteArray("[1]") << QByteArray("account.json is damaged; kept as");
	QTest::newRow("far too large") << QByteArray(R"({"link": "linked", "x": ")" + QByteArray(97'000'000, 'x') +
						     "\"}")
				       << QByteArray("account.json is too large; kept as");
}

void StateTest::keepsWhatItCannotUse()
{
	QFETCH(const QByteArray, content);
	QFETCH(const QByteArray, told);
	const Sandbox sandbox;
	sandbox.writeFile(u"account.json"_s, content);
	const Run run = sandbox.run(statusSwitch);
	QCOMPARE(run.exitCode, 0);
	QCOMPARE(isLinked(run), false);
	QVERIFY2(run.errorOutput.contains(told), run.errorOutput.constData());
	QCOMPARE(setAside(sandbox).size(), 1);
	QVERIFY(sandbox.readFile(setAside(sandbox).first()) == content);

	sandbox.run({u"--link"_s, u"--no-browser"_s});
	QCOMPARE(isLinked(sandbox.run(statusSwitch)), true);
	QCOMPARE(setAside(sandbox).size(), 1);
}

void StateTest::overwritesNothingThatItCannotRead()
{
	const Sandbox sandbox;
	QVERIFY(QDir(sandbox.path()).mkpath(u"account.json/full"_s));
	QCOMPARE(sandbox.run(statusSwitch).exitCode, 0);
	const Run run = sandbox.run({u"--link"_s, u"--no-browser"_s});
	QCOMPARE(run.exitCode, 1);
	QCOMPARE(run.events.last()[u"error"].toString(),
		 u"couldn't read account.json in %1: it is no file."_s.arg(sandbox.path()));
	QVERIFY(QFile::exists(sandbox.path(u"account.json/full"_s)));
}

void StateTest::waitsForNoPipe()
{
#ifdef Q_OS_WIN
	QSKIP("There are no pipes among the files.");
#else
	const Sandbox sandbox;
	QCOMPARE(mkfifo(QFile::encodeName(sandbox.path(u"account.json"_s)).constData(), 0600), 0);
	QCOMPARE(sandbox.run(statusSwitch).exitCode, 0);
#endif
}

void StateTest::writesOnlyWhatChanges()
{
	const Sandbox sandbox;
	const QStringList poll{u"--poll-triggers"_s};
	QCOMPARE(sandbox.run(poll).exitCode, 0);
	const QDateTime before = QFileInfo(sandbox.path(u"chat.json"_s)).lastModified();
	QVERIFY(sandbox.age(u"chat.json"_s, std::chrono::hours(1)));
	const QDateTime aged = QFileInfo(sandbox.path(u"chat.json"_s)).lastModified();
	QVERIFY(aged < before);
	QCOMPARE(sandbox.run(poll).exitCode, 0);
	QCOMPARE(QFileInfo(sandbox.path(u"chat.json"_s)).lastModified(), aged);
}

KESTRUNE_TEST(StateTest)
#include "state.moc"
