#include <QTest>

#include "host/test_program.hpp"
#include "update/update_texts.hpp"

using namespace Qt::StringLiterals;

class UpdateTextsTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void texts_data()
	{
		QTest::addColumn<QString>("text");
		QTest::addColumn<QString>("expected");

		QTest::newRow("available") << availableText(u"1.0.7"_s) << u"Update available v1.0.7 — Update now"_s;
		QTest::newRow("available, odd version")
			<< availableText(u"%1"_s) << u"Update available v%1 — Update now"_s;
		QTest::newRow("downloading") << downloadingText(u"1.0.7"_s, 42) << u"Downloading v1.0.7… 42%"_s;
		QTest::newRow("downloading, odd version and percent")
			<< downloadingText(u"%2"_s, -7) << u"Downloading v%2… -7%"_s;
		QTest::newRow("installing")
			<< installingText(u"1.0.7"_s) << u"Installing v1.0.7… (approve the Windows prompt)"_s;
		QTest::newRow("installed")
			<< installedText(u"1.0.7"_s) << u"Update installed (v1.0.7). Restart OBS to finish."_s;
		QTest::newRow("no newer version")
			<< noNewerVersionText() << u"No newer version is available any more. Retry update"_s;
		QTest::newRow("download failed")
			<< downloadFailedText(u"disk full"_s) << u"Update failed: disk full Retry update"_s;
		QTest::newRow("download failed, in the helper's own words")
			<< downloadFailedText(u"Update server down."_s) << u"Update server down. Retry update"_s;
		QTest::newRow("download failed, lower case") << downloadFailedText(u"update server down."_s)
							     << u"Update failed: update server down. Retry update"_s;
		QTest::newRow("download failed, no words")
			<< downloadFailedText(QString()) << u"Update failed:  Retry update"_s;
		QTest::newRow("helper missing") << downloadHelperMissingText()
						<< u"Update failed: the Kestrune helper is missing. Retry update"_s;
		QTest::newRow("helper stopped") << downloadHelperStoppedText(3)
						<< u"Update failed: the helper stopped (code 3). Retry update"_s;
		QTest::newRow("helper stopped, signed")
			<< downloadHelperStoppedText(-5)
			<< u"Update failed: the helper stopped (code -5). Retry update"_s;
		QTest::newRow("prompt declined")
			<< installerStartFailedText(1223)
			<< u"Update cancelled: the Windows admin prompt was declined. Retry update"_s;
		QTest::newRow("installer not found")
			<< installerStartFailedText(2)
			<< u"Update failed: couldn't start the installer (error 2). Retry update"_s;
		QTest::newRow("installer, unsigned code")
			<< installerStartFailedText(0xFFFFFFFF)
			<< u"Update failed: couldn't start the installer (error 4294967295). Retry update"_s;
		QTest::newRow("runner not started") << updateRunnerStartFailedText()
						    << u"Update failed: couldn't start the installer. Retry update"_s;
		QTest::newRow("timed out")
			<< installerTimedOutText()
			<< u"Update failed: the installer didn't finish within 15 minutes. Retry update"_s;
		QTest::newRow("installer failed")
			<< installerFailedText(-1073741819)
			<< u"Update failed: the installer exited with code -1073741819. Nothing changed until it succeeds. "
			   u"Retry update"_s;
		QTest::newRow("still installed")
			<< stillInstalledText(u"1.0.6"_s)
			<< u"Update failed: the installer finished but v1.0.6 is still installed. Retry update"_s;
		QTest::newRow("still installed, unknown")
			<< stillInstalledText(QString())
			<< u"Update failed: the installer finished but v is still installed. Retry update"_s;
	}
	void texts()
	{
		QFETCH(QString, text);
		QFETCH(QString, expected);
		QCOMPARE(text, expected);
	}
};

KESTRUNE_TEST(UpdateTextsTest)
#include "update_texts.moc"
