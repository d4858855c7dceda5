#include <QFile>
#include <QTest>

#include "host/test_program.hpp"
#include "sandbox.hpp"

using namespace Qt::StringLiterals;

class LogTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void logsToAFileInTheStateFolder();
	void setsALargeLogAside();
};

void LogTest::logsToAFileInTheStateFolder()
{
	const Sandbox sandbox;
	const Run run = sandbox.run({u"--foo"_s});
	QFile log(sandbox.path(u"sample-helper.log"_s));
	QVERIFY(log.open(QIODevice::ReadOnly));
	const QByteArray content = log.readAll();
	QVERIFY(content.contains("doesn't know --foo"));
	QByteArray logged = run.errorOutput;
	QCOMPARE(logged.replace("\r\n", "\n"), content);
}

void LogTest::setsALargeLogAside()
{
	const Sandbox sandbox;
	sandbox.writeFile(u"sample-helper.log"_s, QByteArray(1'000'001, 'x'));
	sandbox.run({u"--foo"_s});
	QVERIFY(QFile(sandbox.path(u"sample-helper.log"_s)).size() < 1000);
	QCOMPARE(QFile(sandbox.path(u"sample-helper.log.old"_s)).size(), 1'000'001);
}

KESTRUNE_TEST(LogTest)
#include "log.moc"
