#include <QDir>
#include <QSet>
#include <QTest>

#include "host/test_program.hpp"
#include "sandbox.hpp"
#include "videos.hpp"

#include <array>

using namespace Qt::StringLiterals;

class PreviewTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void drawsAPicture();
	void drawsEachLookDifferently();
	void keepsPicturesForAWhile();
	void removesThoseOfYesterday();
	void drawsAnewWhenTheCameraMoves();
	void drawsWithoutTextWhenFfmpegCannot();
	void survivesSideBySideRuns();
	void reportsMissingFfmpeg();
};

namespace {
QStringList preview(const QString &layout, const QString &style, const QString &position = u"auto"_s)
{
	return {u"--preview"_s, u"--layout"_s,           layout,  u"--style"_s, style, u"--font"_s,
		u"bebas"_s,     u"--caption-position"_s, position};
}

QString pathOf(const Run &run)
{
	const QJsonObject event = run.onlyEvent();
	return event[u"event"].toString() == u"preview" ? event[u"path"].toString() : QString();
}
} // namespace

void PreviewTest::drawsAPicture()
{
	const Sandbox sandbox;
	const Run run = sandbox.run(preview(u"vtuber-bubble"_s, u"rune"_s));
	QCOMPARE(run.exitCode, 0);
	QVERIFY(pathOf(run).startsWith(sandbox.path()));
	const videos::Details details = videos::details(pathOf(run));
	QCOMPARE(details.width, 540);
	QCOMPARE(details.height, 960);
	QCOMPARE(details.videoCodec, u"png"_s);
	QCOMPARE(QDir(sandbox.path(u"previews"_s)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 1);
}

void PreviewTest::drawsEachLookDifferently()
{
	const Sandbox sandbox;
	QSet<QByteArray> pictures{};
	qsizetype count = 0;
	const auto add = [&](const QStringList &arguments) {
		const QByteArray picture = videos::checksum(pathOf(sandbox.run(arguments)));
		QVERIFY(!picture.isEmpty());
		pictures += picture;
		++count;
	};
	for (const char *layout : {"vtuber-bubble", "vtuber", "facecam", "podcast", "gameplay"}) {
		add(preview(QLatin1String(layout), u"none"_s));
	}
	for (const char *style : {"rune", "neon", "clean", "meme"}) {
		add(preview(u"gameplay"_s, QLatin1String(style)));
	}
	for (const char *position : {"top", "middle", "bottom"}) {
		add(preview(u"gameplay"_s, u"clean"_s, QLatin1String(position)));
	}
	QCOMPARE(pictures.size(), count);
}

void PreviewTest::keepsPicturesForAWhile()
{
	Sandbox sandbox;
	const QStringList arguments = preview(u"podcast"_s, u"none"_s);
	const QString path = pathOf(sandbox.run(arguments));
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_FFMPEG"_s, sandbox.path());
	QCOMPARE(pathOf(sandbox.run(arguments)), path);

	// Drawn long ago, or while the clock was wrong.
	for (const int hours : {2, -2}) {
		QVERIFY(sandbox.age(QDir(sandbox.path()).relativeFilePath(path), std::chrono::hours(hours)));
		QCOMPARE(sandbox.run(arguments).exitCode, 1);
	}
}

void PreviewTest::removesThoseOfYesterday()
{
	const Sandbox sandbox;
	const QString old = pathOf(sandbox.run(preview(u"podcast"_s, u"none"_s)));
	const QString recent = pathOf(sandbox.run(preview(u"gameplay"_s, u"none"_s)));
	const QString foreign = sandbox.writeFile(u"previews/holiday.png"_s, "x");
	for (const QString &path : {old, foreign}) {
		QVERIFY(sandbox.age(u"previews/"_s + QFileInfo(path).fileName(), std::chrono::hours(25)));
	}
	QVERIFY(sandbox.age(u"previews/"_s + QFileInfo(recent).fileName(), std::chrono::hours(23)));
	sandbox.run(preview(u"facecam"_s, u"none"_s));
	QVERIFY(!QFileInfo::exists(old));
	QVERIFY(QFileInfo::exists(recent));
	QVERIFY(QFileInfo::exists(foreign));
}

void PreviewTest::drawsAnewWhenTheCameraMoves()
{
	Sandbox sandbox;
	const QStringList arguments = preview(u"vtuber"_s, u"none"_s);
	const QByteArray before = videos::checksum(pathOf(sandbox.run(arguments)));
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_CAMERA"_s, u"0,0,0.2,0.4"_s);
	const QByteArray after = videos::checksum(pathOf(sandbox.run(arguments)));
	QVERIFY(!before.isEmpty() && !after.isEmpty());
	QVERIFY(after != before);
}

void PreviewTest::drawsWithoutTextWhenFfmpegCannot()
{
	Sandbox sandbox;
	sandbox.useTool(u"ffmpeg"_s, "case \"$*\" in *ass=*) exit 8;; esac\nexec ffmpeg \"$@\"");
	const Run run = sandbox.run(preview(u"facecam"_s, u"meme"_s));
	QCOMPARE(videos::details(pathOf(run)).width, 540);
}

void PreviewTest::survivesSideBySideRuns()
{
	const Sandbox sandbox;
	std::array<std::unique_ptr<QProcess>, 4> processes{};
	for (std::unique_ptr<QProcess> &process : processes) {
		process = sandbox.start(preview(u"vtuber"_s, u"clean"_s));
	}
	for (const std::unique_ptr<QProcess> &process : processes) {
		const Run run = finish(*process);
		QCOMPARE(run.exitCode, 0);
		QCOMPARE(videos::details(pathOf(run)).height, 960);
	}
}

void PreviewTest::reportsMissingFfmpeg()
{
	Sandbox sandbox;
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_FFMPEG"_s, sandbox.path());
	const Run run = sandbox.run(preview(u"vtuber"_s, u"clean"_s));
	QCOMPARE(run.exitCode, 1);
	QCOMPARE(run.onlyEvent()[u"event"].toString(), u"error"_s);
}

KESTRUNE_TEST(PreviewTest)
#include "preview.moc"
