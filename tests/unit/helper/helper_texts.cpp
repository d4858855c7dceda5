#include <QTest>

#include "helper/helper_texts.hpp"
#include "host/test_program.hpp"

using namespace Qt::StringLiterals;

class HelperTextsTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void namesAMissingHelper()
	{
		QCOMPARE(helperMissingText(), u"Kestrune helper missing. Reinstall from " KESTRUNE_WEBSITE "/addons"_s);
	}

	void namesAHelperThatDoesNotStart()
	{
		QCOMPARE(helperStartFailedText(), u"Couldn't start the Kestrune helper (blocked by antivirus?). "
						  "Reinstall from " KESTRUNE_WEBSITE "/addons"_s);
	}

	void namesAHelperThatStopped_data()
	{
		QTest::addColumn<int>("code");
		QTest::addColumn<QString>("shown");
		QTest::newRow("3") << 3 << u"3"_s;
		QTest::newRow("0") << 0 << u"0"_s;
		QTest::newRow("negative") << -1073741819 << u"-1073741819"_s;
	}
	void namesAHelperThatStopped()
	{
		QFETCH(int, code);
		QFETCH(QString, shown);
		QCOMPARE(helperStoppedText(code), u"The Kestrune helper stopped unexpectedly (code "_s + shown +
							  u"). Details: %APPDATA%\\Kestrune\\logs\\helper.log"_s);
	}
};

KESTRUNE_TEST(HelperTextsTest)
#include "helper_texts.moc"
