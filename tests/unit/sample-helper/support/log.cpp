#include "sandbox.hpp"
#include "host/test_program.hpp"

#include <QFile>
#include <QTest>

class LogTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void logs_to_a_file_in_the_state_folder();
	void sets_a_large_log_aside();
};

void LogTest::logs_to_a_file_in_the_state_folder()
{
	const Sandbox sandbox;
	const Run run = sandbox.run({QStringLiteral("--foo")});
	QFile log(sandbox.path(QStringLiteral("sample-helper.log")));
	QVERIFY(log.open(QIODevice::ReadOnly));
	const QByteArray content = log.readAll();
	QVERIFY(content.contains("doesn't know --foo"));
	QByteArray logged = run.errorOutput;
	QCOMPARE(logged.replace("\r\n", "\n"), content);
}

void LogTest::sets_a_large_log_aside()
{
	const Sandbox sandbox;
	sandbox.writeFile(QStringLiteral("sample-helper.log"), QByteArray(1'000'001, 'x'));
	sandbox.run({QStringLiteral("--foo")});
	QVERIFY(QFile(sandbox.path(QStringLiteral("sample-helper.log"))).size() < 1000);
	QCOMPARE(QFile(sandbox.path(QStringLiteral("sample-helper.log.old"))).size(), 1'000'001);
}

KESTRUNE_TEST(LogTest)
#include "log.moc"
