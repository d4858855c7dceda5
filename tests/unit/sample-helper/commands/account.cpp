#include "sandbox.hpp"
#include "host/test_program.hpp"

#include <QFile>
#include <QJsonArray>
#include <QRegularExpression>
#include <QTest>
#include <QUrl>

class AccountTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void begins_unlinked_with_all_choices_on_offer();
	void links_through_a_local_page_and_a_code();
	void sends_the_code_before_it_waits();
	void unlinks_and_is_revoked();
	void tells_that_it_is_offline();
	void survives_damaged_state();
	void addresses_a_page_in_an_odd_folder();
};

namespace {

const QStringList statusSwitch{QStringLiteral("--status")};
const QStringList linkSwitches{QStringLiteral("--link"), QStringLiteral("--no-browser")};

} // namespace

void AccountTest::begins_unlinked_with_all_choices_on_offer()
{
	const Run run = Sandbox().run(statusSwitch);
	QCOMPARE(run.exitCode, 0);
	const QJsonObject expected{
		{QStringLiteral("event"), QStringLiteral("status")},
		{QStringLiteral("linked"), false},
		{QStringLiteral("offline"), false},
		{QStringLiteral("layout"), QStringLiteral("vtuber-bubble")},
		{QStringLiteral("style"), QStringLiteral("rune")},
		{QStringLiteral("font"), QStringLiteral("bebas")},
		{QStringLiteral("layouts"),
		 QJsonArray{QStringLiteral("vtuber-bubble"), QStringLiteral("vtuber"), QStringLiteral("facecam"),
			    QStringLiteral("podcast"), QStringLiteral("gameplay")}},
		{QStringLiteral("styles"),
		 QJsonArray{QStringLiteral("rune"), QStringLiteral("neon"), QStringLiteral("clean"),
			    QStringLiteral("meme"), QStringLiteral("none")}},
		{QStringLiteral("fonts"), QJsonArray{QStringLiteral("bebas"), QStringLiteral("montserrat"),
						     QStringLiteral("inter"), QStringLiteral("bangers")}}};
	QCOMPARE(run.onlyEvent(), expected);
}

void AccountTest::links_through_a_local_page_and_a_code()
{
	const Sandbox sandbox;
	const Run run = sandbox.run(linkSwitches);
	QCOMPARE(run.exitCode, 0);
	QCOMPARE(run.events.size(), 2);
	QCOMPARE(run.events[0][QLatin1String("event")].toString(), QStringLiteral("code"));
	QCOMPARE(run.events[1][QLatin1String("event")].toString(), QStringLiteral("linked"));
	const QString code = run.events[0][QLatin1String("code")].toString();
	QVERIFY(QRegularExpression(QStringLiteral("^[A-Z]{4}-[0-9]{4}$")).match(code).hasMatch());

	QFile page(QUrl(run.events[0][QLatin1String("url")].toString()).toLocalFile());
	QVERIFY(page.open(QIODevice::ReadOnly));
	QVERIFY(page.readAll().contains(code.toUtf8()));

	const QJsonObject status = sandbox.run(statusSwitch).onlyEvent();
	QCOMPARE(status[QLatin1String("linked")].toBool(), true);
	QCOMPARE(status[QLatin1String("login")].toString(), QStringLiteral("sample"));
	QVERIFY(!status.contains(QLatin1String("error")));
}

void AccountTest::sends_the_code_before_it_waits()
{
	Sandbox sandbox;
	sandbox.setVariable(QStringLiteral("KESTRUNE_SAMPLE_HELPER_LINK_MS"), QStringLiteral("60000"));
	const std::unique_ptr<QProcess> process = sandbox.start(linkSwitches);
	QVERIFY(process->waitForReadyRead(20000));
	QVERIFY(process->readAllStandardOutput().endsWith("\n"));
	QCOMPARE(sandbox.run(statusSwitch).onlyEvent()[QLatin1String("linked")].toBool(), false);
	QCOMPARE(process->state(), QProcess::Running);
	process->kill();
	finish(*process);
}

void AccountTest::unlinks_and_is_revoked()
{
	const Sandbox sandbox;
	sandbox.run(linkSwitches);
	const QJsonObject revoked = sandbox.run({QStringLiteral("--revoke")}).onlyEvent();
	QCOMPARE(revoked[QLatin1String("linked")].toBool(true), false);
	QCOMPARE(revoked[QLatin1String("error")].toString(), QStringLiteral("revoked"));

	sandbox.run(linkSwitches);
	QCOMPARE(sandbox.run(statusSwitch).onlyEvent()[QLatin1String("linked")].toBool(), true);

	const QJsonObject unlinked = sandbox.run({QStringLiteral("--unlink")}).onlyEvent();
	QCOMPARE(unlinked[QLatin1String("linked")].toBool(true), false);
	QVERIFY(!unlinked.contains(QLatin1String("error")));
}

void AccountTest::tells_that_it_is_offline()
{
	const Sandbox byFile;
	byFile.writeFile(QStringLiteral("offline"), {});
	QCOMPARE(byFile.run(statusSwitch).onlyEvent()[QLatin1String("offline")].toBool(), true);
	Sandbox byVariable;
	byVariable.setVariable(QStringLiteral("KESTRUNE_SAMPLE_HELPER_OFFLINE"), QStringLiteral("1"));
	QCOMPARE(byVariable.run(statusSwitch).onlyEvent()[QLatin1String("offline")].toBool(), true);
}

void AccountTest::survives_damaged_state()
{
	const Sandbox sandbox;
	sandbox.writeFile(QStringLiteral("account.json"), "{\"link\": \"linked");
	sandbox.writeFile(QStringLiteral("look.json"), "[1, 2]");
	const Run run = sandbox.run(statusSwitch);
	QCOMPARE(run.exitCode, 0);
	QCOMPARE(run.onlyEvent()[QLatin1String("linked")].toBool(true), false);
	QVERIFY(run.errorOutput.contains("damaged"));
	sandbox.run(linkSwitches);
	QCOMPARE(sandbox.run(statusSwitch).onlyEvent()[QLatin1String("linked")].toBool(), true);
}

void AccountTest::addresses_a_page_in_an_odd_folder()
{
	Sandbox sandbox;
	QString name = QString::fromUtf8("a b/#1 100% 'ü' 🎬");
#ifndef Q_OS_WIN // where no name may have it
	name += QLatin1Char('"');
#endif
	sandbox.setVariable(QStringLiteral("KESTRUNE_SAMPLE_HELPER_HOME"), sandbox.path(name));
	const Run run = sandbox.run(linkSwitches);
	QCOMPARE(run.exitCode, 0);
	const QString address = run.events[0][QLatin1String("url")].toString();
	QVERIFY(address.startsWith(QStringLiteral("file:///")));
	QVERIFY(!address.contains(QLatin1Char(' ')));
	QVERIFY(QFile::exists(QUrl(address, QUrl::TolerantMode).toLocalFile()));
}

KESTRUNE_TEST(AccountTest)
#include "account.moc"
