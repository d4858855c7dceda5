#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include "host/test_program.hpp"
#include "sandbox.hpp"
#include "support/settings.hpp"

using namespace Qt::StringLiterals;

class SettingsTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void readsLines_data();
	void readsLines();
	void saysWhatIsWrong_data();
	void saysWhatIsWrong();
	void letsVariablesWin();
	void knowsWhatTheReadmeLists();
};

void SettingsTest::readsLines_data()
{
	QTest::addColumn<QByteArray>("line");
	QTest::addColumn<QString>("value");
	QTest::newRow("plain") << QByteArray("OUTPUT=/shorts") << u"/shorts"_s;
	QTest::newRow("blanks") << QByteArray("  OUTPUT =  /my shorts \r") << u"/my shorts"_s;
	QTest::newRow("long name") << QByteArray("KESTRUNE_SAMPLE_HELPER_OUTPUT=/shorts") << u"/shorts"_s;
	QTest::newRow("small letters") << QByteArray("output=/shorts") << u"/shorts"_s;
	QTest::newRow("Windows") << QByteArray("OUTPUT=C:\\Users\\ana\\new") << u"C:\\Users\\ana\\new"_s;
	QTest::newRow("quotation marks") << QByteArray("OUTPUT=\"/my shorts\"") << u"/my shorts"_s;
	QTest::newRow("commas and signs") << QByteArray("OUTPUT=0,0.6=#;x") << u"0,0.6=#;x"_s;
	QTest::newRow("home folder") << QByteArray("OUTPUT=~/shorts") << QDir::homePath() + u"/shorts"_s;
	QTest::newRow("foreign letters") << QByteArray("\xef\xbb\xbfOUTPUT=/été") << u"/été"_s;
	QTest::newRow("comments") << QByteArray("# OUTPUT=/a\n; OUTPUT=/b\n[section]\n\nOUTPUT=/c") << u"/c"_s;
	QTest::newRow("empty") << QByteArray("OUTPUT=") << QString();
	QTest::newRow("no such line") << QByteArray("ENCODER=libx264") << QString();
}

void SettingsTest::readsLines()
{
	QFETCH(const QByteArray, line);
	QFETCH(const QString, value);
	const settings::Content content = settings::parse(line);
	QCOMPARE(content.values.value(u"OUTPUT"_s), value);
	QCOMPARE(content.problems, QStringList());
}

void SettingsTest::saysWhatIsWrong_data()
{
	QTest::addColumn<QByteArray>("line");
	QTest::addColumn<QString>("problem");
	QTest::newRow("no sign") << QByteArray("\nOUTPUT /shorts") << u"Line 2 of the settings file has no \"=\"."_s;
	QTest::newRow("no such setting") << QByteArray("OUTPUTS=/shorts")
					 << u"Line 1 of the settings file: OUTPUTS is no setting."_s;
	QTest::newRow("no number")
		<< QByteArray("LINK_MS=soon")
		<< u"Line 1 of the settings file: LINK_MS needs a number of milliseconds, not \"soon\"."_s;
	QTest::newRow("below zero")
		<< QByteArray("LINK_MS=-1")
		<< u"Line 1 of the settings file: LINK_MS needs a number of milliseconds, not \"-1\"."_s;
	QTest::newRow("none at once")
		<< QByteArray("CLIPS_AT_ONCE=0")
		<< u"Line 1 of the settings file: CLIPS_AT_ONCE needs a number from 1 up, not \"0\"."_s;
	QTest::newRow("no switch") << QByteArray("OFFLINE=yes")
				   << u"Line 1 of the settings file: OFFLINE needs 0 or 1, not \"yes\"."_s;
	QTest::newRow("where the file is")
		<< QByteArray("HOME=/x")
		<< u"Line 1 of the settings file: HOME can only be set as an environment variable."_s;
	QTest::newRow("twice") << QByteArray("OUTPUT=/a\nOUTPUT=/b")
			       << u"Line 2 of the settings file sets OUTPUT again; this one counts."_s;
}

void SettingsTest::saysWhatIsWrong()
{
	QFETCH(const QByteArray, line);
	QFETCH(const QString, problem);
	QCOMPARE(settings::parse(line).problems, QStringList{problem});
}

void SettingsTest::letsVariablesWin()
{
	Sandbox sandbox;
	const auto folder = [&sandbox] { return sandbox.run({u"--recent"_s}).onlyEvent()[u"folder"].toString(); };
	QCOMPARE(folder(), sandbox.shortsFolder());
	sandbox.writeFile(u"settings.ini"_s, "OUTPUT=" + sandbox.path(u"by file"_s).toUtf8());
	QCOMPARE(folder(), sandbox.path(u"by file"_s));
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_OUTPUT"_s, sandbox.path(u"by variable"_s));
	QCOMPARE(folder(), sandbox.path(u"by variable"_s));
}

void SettingsTest::knowsWhatTheReadmeLists()
{
	QFile file(u"" SOURCE_FOLDER "/sample-helper/README.md"_s);
	QVERIFY(file.open(QIODevice::ReadOnly));
	const QString readme = QString::fromUtf8(file.readAll());
	static const QRegularExpression row(u"^\\| `KESTRUNE_SAMPLE_HELPER_([A-Z_]+)` \\|"_s,
					    QRegularExpression::MultilineOption);
	QStringList listed{};
	for (const QRegularExpressionMatch &match : row.globalMatch(readme)) {
		listed += match.captured(1);
	}
	QStringList known = settings::names();
	listed.sort();
	known.sort();
	QCOMPARE(listed, known);
}

KESTRUNE_TEST(SettingsTest)
#include "settings.moc"
