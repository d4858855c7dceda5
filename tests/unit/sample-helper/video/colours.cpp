#include <QTest>

#include "clip_runs.hpp"
#include "host/test_program.hpp"
#include "videos.hpp"

using namespace Qt::StringLiterals;

class ColoursTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void mapsHdrToOrdinaryColours_data();
	void mapsHdrToOrdinaryColours();
	void saysThatHdrStays();
};

void ColoursTest::mapsHdrToOrdinaryColours_data()
{
	QTest::addColumn<QByteArray>("transfer");
	QTest::newRow("PQ") << QByteArray("smpte2084");
	QTest::newRow("HLG") << QByteArray("arib-std-b67");
}

void ColoursTest::mapsHdrToOrdinaryColours()
{
	QFETCH(const QByteArray, transfer);
	const QString replay = videos::hdr(transfer.constData());
	QCOMPARE(videos::details(replay).colourTransfer, QLatin1String(transfer));
	const Sandbox sandbox;
	linkAccount(sandbox);
	const Run run = sandbox.run(processArguments(replay, 1, lookArguments("facecam", "none")));
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), QString());
	const videos::Details details = videos::details(shortPath(run));
	QCOMPARE(details.pixelFormat, u"yuv420p"_s);
	QCOMPARE(details.colourTransfer, u"bt709"_s);
	QCOMPARE(details.colourPrimaries, u"bt709"_s);
	QCOMPARE(details.colourMatrix, u"bt709"_s);
	// 203 nits are the white of ordinary pictures, less what is compressed for what is brighter.
	const int level = videos::brightness(shortPath(run)).first();
	QVERIFY2(level > 200 && level < 250, qPrintable(QString::number(level)));
}

void ColoursTest::saysThatHdrStays()
{
	Sandbox sandbox;
	linkAccount(sandbox);
	sandbox.useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
	sandbox.useTool(u"ffmpeg"_s, "case \"$*\" in *zscale*) echo 'No such filter: zscale' >&2; exit 8;; esac\n"
				     "exec ffmpeg \"$@\"");
	const Run run = sandbox.run(processArguments(videos::hdr("smpte2084"), 1, lookArguments("gameplay", "none")));
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), u"its HDR colours look pale on ordinary screens, this ffmpeg can't convert them"_s);
	QCOMPARE(videos::details(shortPath(run)).colourTransfer, u"smpte2084"_s);
}

KESTRUNE_TEST(ColoursTest)
#include "colours.moc"
