#include <QTest>

#include "doctor/remedies.hpp"
#include "host/test_program.hpp"

using namespace Qt::StringLiterals;
using remedies::System;

class RemediesTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void knowsSystems_data();
	void knowsSystems();
	void hasOneForEverySystem();
	void namesPackagesOnlyWhereTheyAre();
};

void RemediesTest::knowsSystems_data()
{
	QTest::addColumn<QByteArray>("osRelease");
	QTest::addColumn<int>("system");
	const auto row = [](const char *name, const QByteArray &osRelease, System system) {
		QTest::newRow(name) << osRelease << static_cast<int>(system);
	};
	row("Debian", "PRETTY_NAME=\"Debian GNU/Linux 13\"\nID=debian\n", System::Debian);
	row("Ubuntu", "ID=ubuntu\nID_LIKE=debian\n", System::Debian);
	row("Mint", "ID=linuxmint\nID_LIKE=\"ubuntu debian\"\n", System::Debian);
	row("Fedora", "NAME=\"Fedora Linux\"\nID=fedora\n", System::Fedora);
	row("Nobara", "ID=nobara\nID_LIKE=\"rhel centos fedora\"\n", System::Fedora);
	row("Arch", "ID=arch\n", System::Arch);
	row("Manjaro", "ID=manjaro\nID_LIKE=arch\n", System::Arch);
	row("unknown", "ID=void\nVARIANT_ID=debian\n", System::Other);
	row("no such file", "", System::Other);
}

void RemediesTest::knowsSystems()
{
	QFETCH(const QByteArray, osRelease);
	QFETCH(const int, system);
	QCOMPARE(static_cast<int>(remedies::systemOf(osRelease)), system);
}

void RemediesTest::hasOneForEverySystem()
{
	for (const System system : {System::Debian, System::Fedora, System::Arch, System::Windows, System::Other}) {
		for (const QString &remedy :
		     {remedies::ffmpeg(system), remedies::fullFfmpeg(system), remedies::someFont(system),
		      remedies::font(u"Inter"_s, system), remedies::whisper(u"/folder"_s, system)}) {
			const bool isCommand = remedy.startsWith(u"sudo "_s) || remedy.startsWith(u"winget "_s);
			QVERIFY2(isCommand || remedy.startsWith(u"https://"_s), qPrintable(remedy));
		}
	}
	QVERIFY(remedies::model(u"/folder"_s).startsWith(u"curl "_s));
	QVERIFY(remedies::model(u"/folder"_s).contains(u"folder"_s));
}

void RemediesTest::namesPackagesOnlyWhereTheyAre()
{
	QCOMPARE(remedies::font(u"Bebas Neue"_s, System::Debian), u"sudo apt install fonts-bebas-neue"_s);
	QCOMPARE(remedies::font(u"Bangers"_s, System::Debian), u"https://fonts.google.com/specimen/Bangers"_s);
	QCOMPARE(remedies::font(u"Bebas Neue"_s, System::Arch), u"https://fonts.google.com/specimen/Bebas+Neue"_s);
}

KESTRUNE_TEST(RemediesTest)
#include "remedies.moc"
