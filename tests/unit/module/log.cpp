#include <QTest>

#include "host/obs_session.hpp"
#include "host/test_program.hpp"
#include "module/log.hpp"

using namespace Qt::StringLiterals;

class LogTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void beginsWithTheModulesName()
	{
		const ObsSession obs;
		moduleLog(LOG_INFO, "plain");
		const QList<LogLine> expected{{LOG_INFO, u"[kestrune] plain"_s}};
		QCOMPARE(obs.moduleLog(), expected);
	}

	void appliesItsArgumentsAfterThePrefix()
	{
		const ObsSession obs;
		moduleLog(LOG_WARNING, "%d of %s, 100%%", 3, "%s");
		const QList<LogLine> expected{{LOG_WARNING, u"[kestrune] 3 of %s, 100%"_s}};
		QCOMPARE(obs.moduleLog(), expected);
	}

	void keepsThePrefixOfAnEmptyLine()
	{
		const ObsSession obs;
		moduleLog(LOG_INFO, "%s", "");
		QCOMPARE(obs.moduleLog().size(), 1);
		QCOMPARE(obs.moduleLog().front().text, u"[kestrune] "_s);
	}

	void passesTheLevelOn_data()
	{
		QTest::addColumn<int>("level");
		QTest::newRow("error") << int{LOG_ERROR};
		QTest::newRow("warning") << int{LOG_WARNING};
		QTest::newRow("info") << int{LOG_INFO};
		QTest::newRow("debug") << int{LOG_DEBUG};
	}
	void passesTheLevelOn()
	{
		QFETCH(int, level);
		const ObsSession obs;
		moduleLog(level, "x");
		QCOMPARE(obs.moduleLog().front().level, level);
	}
};

KESTRUNE_TEST(LogTest)
#include "log.moc"
