#include <QTest>

#include "host/test_program.hpp"
#include "update/installer.hpp"

using namespace Qt::StringLiterals;

class InstallerLimitTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void anInstallerMayTakeFifteenMinutes()
	{
		QVERIFY(!installerTookTooLong(0));
		QVERIFY(!installerTookTooLong(899'999));
		QVERIFY(!installerTookTooLong(900'000));
		QVERIFY(installerTookTooLong(900'001));
		QVERIFY(installerTookTooLong(3'000'000'000));
	}
};

KESTRUNE_TEST(InstallerLimitTest)
#include "installer_limit.moc"
