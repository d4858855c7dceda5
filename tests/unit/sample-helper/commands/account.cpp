#include <QFile>
#include <QJsonArray>
#include <QRegularExpression>
#include <QTest>
#include <QUrl>

#include "host/test_program.hpp"
#include "sandbox.hpp"

using namespace Qt::StringLiterals;

class AccountTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void beginsUnlinkedWithAllChoicesOnOffer();
	void linksThroughALocalPageAndACode();
	void sendsTheCodeBeforeItWaits();
	void unlinksAndIsRevoked();
	void tellsThatItIsOffline();
	void survivesDamagedState();
	void addressesAPageInAnOddFolder();
};

namespace {
const QStringList statusSwitch{u"--status"_s};
const QStringList linkSwitches{u"--link"_s, u"--no-browser"_s};
} // namespace

void AccountTest::beginsUnlinkedWithAllChoicesOnOffer()
{
	const Run run = Sandbox().run(statusSwitch);
	QCOMPARE(run.exitCode, 0);
	const QJsonObject expected{
		{u"event"_s, u"status"_s},
		{u"linked"_s, false},
		{u"offline"_s, false},
		{u"layout"_s, u"vtuber-bubble"_s},
		{u"style"_s, u"rune"_s},
		{u"font"_s, u"bebas"_s},
		{u"layouts"_s, QJsonArray{u"vtuber-bubble"_s, u"vtuber"_s, u"facecam"_s, u"podcast"_s, u"gameplay"_s}},
		{u"styles"_s, QJsonArray{u"rune"_s, u"neon"_s, u"clean"_s, u"meme"_s, u"none"_s}},
		{u"fonts"_s, QJsonArray{u"bebas"_s, u"montserrat"_s, u"inter"_s, u"bangers"_s}}};
	QCOMPARE(run.onlyEvent(), expected);
}

void AccountTest::linksThroughALocalPageAndACode()
{
	const Sandbox sandbox;
	const Run run = sandbox.run(linkSwitches);
	QCOMPARE(run.exitCode, 0);
	QCOMPARE(run.events.size(), 2);
	QCOMPARE(run.events[0][u"event"].toString(), u"code"_s);
	QCOMPARE(run.events[1][u"event"].toString(), u"linked"_s);
	const QString code = run.events[0][u"code"].toString();
	QVERIFY(QRegularExpression(u"^[A-Z]{4}-[0-9]{4}$"_s).match(code).hasMatch());

	QFile page(QUrl(run.events[0][u"url"].toString()).toLocalFile());
	QVERIFY(page.open(QIODevice::ReadOnly));
	QVERIFY(page.readAll().contains(code.toUtf8()));

	const QJsonObject status = sandbox.run(statusSwitch).onlyEvent();
	QCOMPARE(status[u"linked"].toBool(), true);
	QCOMPARE(status[u"login"].toString(), u"sample"_s);
	QVERIFY(!status.contains(u"error"));
}

void AccountTest::sendsTheCodeBeforeItWaits()
{
	Sandbox sandbox;
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_LINK_MS"_s, u"60000"_s);
	const std::unique_ptr<QProcess> process = sandbox.start(linkSwitches);
	QVERIFY(process->waitForReadyRead(20000));
	QVERIFY(process->readAllStandardOutput().endsWith("\n"));
	QCOMPARE(sandbox.run(statusSwitch).onlyEvent()[u"linked"].toBool(), false);
	QCOMPARE(process->state(), QProcess::Running);
	process->kill();
	finish(*process);
}

void AccountTest::unlinksAndIsRevoked()
{
	const Sandbox sandbox;
	sandbox.run(linkSwitches);
	const QJsonObject revoked = sandbox.run({u"--revoke"_s}).onlyEvent();
	QCOMPARE(revoked[u"linked"].toBool(true), false);
	QCOMPARE(revoked[u"error"].toString(), u"revoked"_s);

	sandbox.run(linkSwitches);
	QCOMPARE(sandbox.run(statusSwitch).onlyEvent()[u"linked"].toBool(), true);

	const QJsonObject unlinked = sandbox.run({u"--unlink"_s}).onlyEvent();
	QCOMPARE(unlinked[u"linked"].toBool(true), false);
	QVERIFY(!unlinked.contains(u"error"));
}

void AccountTest::tellsThatItIsOffline()
{
	const Sandbox byFile;
	byFile.writeFile(u"offline"_s, {});
	QCOMPARE(byFile.run(statusSwitch).onlyEvent()[u"offline"].toBool(), true);
	Sandbox byVariable;
	byVariable.setVariable(u"KESTRUNE_SAMPLE_HELPER_OFFLINE"_s, u"1"_s);
	QCOMPARE(byVariable.run(statusSwitch).onlyEvent()[u"offline"].toBool(), true);
}

void AccountTest::survivesDamagedState()
{
	const Sandbox sandbox;
	sandbox.writeFile(u"account.json"_s, "{\"link\": \"linked");
	sandbox.writeFile(u"look.json"_s, "[1, 2]");
	const Run run = sandbox.run(statusSwitch);
	QCOMPARE(run.exitCode, 0);
	QCOMPARE(run.onlyEvent()[u"linked"].toBool(true), false);
	QVERIFY(run.errorOutput.contains("damaged"));
	sandbox.run(linkSwitches);
	QCOMPARE(sandbox.run(statusSwitch).onlyEvent()[u"linked"].toBool(), true);
}

void AccountTest::addressesAPageInAnOddFolder()
{
	Sandbox sandbox;
	QString name = QString::fromUtf8("a b/#1 100% 'ü' 🎬");
#ifndef Q_OS_WIN // where no name may have it
	name += u'"';
#endif
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_HOME"_s, sandbox.path(name));
	const Run run = sandbox.run(linkSwitches);
	QCOMPARE(run.exitCode, 0);
	const QString address = run.events[0][u"url"].toString();
	QVERIFY(address.startsWith(u"file:///"_s));
	QVERIFY(!address.contains(u' '));
	QVERIFY(QFile::exists(QUrl(address, QUrl::TolerantMode).toLocalFile()));
}

KESTRUNE_TEST(AccountTest)
#include "account.moc"
