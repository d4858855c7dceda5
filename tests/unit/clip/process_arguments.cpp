#include <QTest>

#include "clip/process_arguments.hpp"
#include "dock/clip_choices.hpp"
#include "host/test_program.hpp"

using namespace Qt::StringLiterals;

class ProcessArgumentsTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void processArguments_data()
	{
		QTest::addColumn<QString>("layout");
		QTest::addColumn<QString>("style");
		QTest::addColumn<QString>("font");
		QTest::addColumn<QString>("position");
		QTest::addColumn<QStringList>("choices");

		QTest::newRow("all") << u"podcast"_s << u"neon"_s << u"inter"_s << u"top"_s
				     << QStringList{u"--layout"_s,
						    u"podcast"_s,
						    u"--style"_s,
						    u"neon"_s,
						    u"--font"_s,
						    u"inter"_s,
						    u"--caption-position"_s,
						    u"top"_s};
		QTest::newRow("none") << u"a"_s << u"none"_s << u"b"_s << u"top"_s
				      << QStringList{u"--layout"_s, u"a"_s,      u"--style"_s,
						     u"none"_s,     u"--font"_s, u"b"_s};
		QTest::newRow("None is a style")
			<< u"a"_s << u"None"_s << u"b"_s << u"top"_s
			<< QStringList{u"--layout"_s,           u"a"_s,  u"--style"_s, u"None"_s, u"--font"_s, u"b"_s,
				       u"--caption-position"_s, u"top"_s};
		QTest::newRow("empty") << QString() << QString() << QString() << QString()
				       << QStringList{u"--caption-position"_s, QString()};
		QTest::newRow("only a font") << QString() << QString() << u"b"_s << u"top"_s
					     << QStringList{u"--font"_s, u"b"_s, u"--caption-position"_s, u"top"_s};
	}
	void processArguments()
	{
		QFETCH(QString, layout);
		QFETCH(QString, style);
		QFETCH(QString, font);
		QFETCH(QString, position);
		QFETCH(QStringList, choices);
		const QStringList start{u"--process"_s, u"C:/a b.mkv"_s, u"--seconds"_s,
					u"120"_s,       u"--scene"_s,    u"obs"_s};
		QCOMPARE(::processArguments(u"C:/a b.mkv"_s, {120, layout, style, font, position}), start + choices);
	}
};

KESTRUNE_TEST(ProcessArgumentsTest)
#include "process_arguments.moc"
