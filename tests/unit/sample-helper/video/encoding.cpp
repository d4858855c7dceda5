#include <QTest>

#include "clip_runs.hpp"
#include "host/test_program.hpp"
#include "videos.hpp"

#include <cmath>

using namespace Qt::StringLiterals;

class EncodingTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void keepsTheFrameRate_data();
	void keepsTheFrameRate();
	void keepsTheLoudness_data();
	void keepsTheLoudness();
	void takesTheFirstEncoderThatWorks();
	void givesUpOnHardwareThatHangs();
	void goesOnInSoftwareWhenHardwareFails();
	void goesOnInSoftwareWhenHardwareHangs();
	void goesOnInSoftwareWhenHardwareWritesRubbish_data();
	void goesOnInSoftwareWhenHardwareWritesRubbish();
	void encodesInSoftwareWhenNoHardwareWorks();
	void takesTheEncoderThatIsNamed();
	void tellsItsSpeed();
};

namespace {
/// A sandbox whose ffmpeg claims hardware encoders: h264_nvenc, whose hardware is missing, and h264_vaapi and h264_qsv,
/// which use libx264. "calls.txt" records every call.
class Workshop : public Sandbox {
public:
	/// `onEncode` runs before a Short is encoded in hardware, `onTrial` when the missing hardware is tried.
	explicit Workshop(const QByteArray &onEncode = {},
			  const QByteArray &onTrial = "echo 'no capable devices found' >&2; exit 187")
	{
		linkAccount(*this);
		setVariable(u"KESTRUNE_SAMPLE_HELPER_ENCODER"_s, QString());
		useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
		useTool(u"ffmpeg"_s, "echo \"$*\" >> \"$KESTRUNE_SAMPLE_HELPER_HOME/calls.txt\"\n"
				     "case \"$*\" in\n"
				     "*-encoders*) echo ' V....D h264_nvenc  one'; echo ' V..... h264_qsv  two';"
				     " echo ' V....D h264_vaapi  three'; echo ' A..... libfoo  four'; exit;;\n"
				     "*h264_nvenc*) " +
					     onTrial +
					     ";;\n"
					     "*h264_qsv*'-f null -'|*h264_vaapi*'-f null -') exit;;\n"
					     "*h264_qsv*|*h264_vaapi*)\n" +
					     onEncode +
					     "\n  for last; do :; done\n"
					     "  set -- \"$@\" END\n"
					     "  while [ \"$1\" != END ]; do\n"
					     "    case $1 in\n"
					     "    h264_*) set -- \"$@\" libx264;;\n"
					     "    -preset|-global_quality) shift;;\n"
					     "    *) set -- \"$@\" \"$1\";;\n"
					     "    esac\n"
					     "    shift\n"
					     "  done\n"
					     "  shift;;\n"
					     "esac\n"
					     "exec ffmpeg \"$@\"");
	}

	Run clip() const { return run(processArguments(videos::silent(), 1, lookArguments("gameplay", "none"))); }

	/// How often ffmpeg was called with this text in its arguments.
	qsizetype calls(const char *text) const
	{
		return QString::fromUtf8(readFile(u"calls.txt"_s)).split(u'\n').filter(QLatin1String(text)).size();
	}
};
} // namespace

void EncodingTest::keepsTheFrameRate_data()
{
	QTest::addColumn<QByteArray>("layout");
	QTest::addColumn<int>("rate");
	QTest::addColumn<int>("kept");
	QTest::newRow("30") << QByteArray("vtuber-bubble") << 30 << 30;
	QTest::newRow("60") << QByteArray("podcast") << 60 << 60;
	QTest::newRow("120 is more than players show") << QByteArray("vtuber-bubble") << 120 << 60;
}

void EncodingTest::keepsTheFrameRate()
{
	QFETCH(const QByteArray, layout);
	QFETCH(const int, rate);
	QFETCH(const int, kept);
	const Sandbox sandbox;
	const Run run =
		sandbox.run(processArguments(videos::atFrameRate(rate), 1, lookArguments(layout.constData(), "none")));
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(qRound(videos::details(shortPath(run)).frameRate * 100), kept * 100);
	const qsizetype frames = videos::brightness(shortPath(run)).size();
	QVERIFY2(std::abs(frames - kept) <= 2, qPrintable(QString::number(frames)));
}

void EncodingTest::keepsTheLoudness_data()
{
	QTest::addColumn<QList<double>>("amplitudes");
	QTest::addColumn<int>("channels");
	QTest::newRow("one channel") << QList<double>{0.3} << 1;
	QTest::newRow("two channels") << QList<double>{0.4, 0.05} << 2;
	QTest::newRow("loud") << QList<double>{0.95, 0.9} << 2;
	QTest::newRow("six channels become two") << QList<double>{0.2, 0.1, 0, 0, 0, 0} << 2;
}

void EncodingTest::keepsTheLoudness()
{
	QFETCH(const QList<double>, amplitudes);
	QFETCH(const int, channels);
	const QString replay = videos::withTones(amplitudes);
	const QList<double> before = videos::loudness(replay);
	QCOMPARE(before.size(), amplitudes.size());
	const Sandbox sandbox;
	const Run run = sandbox.run(processArguments(replay, 2, lookArguments("gameplay", "none")));
	const QList<double> after = videos::loudness(shortPath(run));
	QCOMPARE(after.size(), channels);
	for (int channel = 0; channel < channels; ++channel) {
		// 0.2 dB.
		QVERIFY2(std::abs(after[channel] / before[channel] - 1) < 0.023,
			 qPrintable(u"%1 -> %2"_s.arg(before[channel]).arg(after[channel])));
	}
}

void EncodingTest::takesTheFirstEncoderThatWorks()
{
	const Workshop workshop;
	const Run run = workshop.clip();
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), QString());
	QCOMPARE(workshop.calls("-encoders"), 1);
	QCOMPARE(workshop.calls("h264_nvenc"), 1);
	QCOMPARE(workshop.calls("h264_qsv"), 2);
	QCOMPARE(workshop.calls("h264_vaapi"), 0);
	QCOMPARE(workshop.calls("libx264"), 0);
	QVERIFY(run.errorOutput.contains("h264_qsv encoded 1.0 s"));
	QCOMPARE(videos::details(shortPath(run)).height, 1920);
}

void EncodingTest::givesUpOnHardwareThatHangs()
{
	Workshop workshop({}, "exec sleep 1000");
	workshop.setVariable(u"KESTRUNE_SAMPLE_HELPER_TRIAL_LIMIT_MS"_s, u"5000"_s);
	const Run run = workshop.clip();
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), QString());
	QCOMPARE(workshop.calls("h264_nvenc"), 1);
	QVERIFY(run.errorOutput.contains("took longer than 5000 ms"));
	QVERIFY(run.errorOutput.contains("h264_qsv encoded 1.0 s"));
}

void EncodingTest::goesOnInSoftwareWhenHardwareFails()
{
	Workshop workshop("for last; do :; done; echo half > \"${last#file:}\"; echo 'device lost' >&2; exit 1");
	workshop.setVariable(u"KESTRUNE_SAMPLE_HELPER_ENCODER"_s, u"h264_vaapi"_s);
	const Run run = workshop.clip();
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), u"h264_vaapi failed, used libx264"_s);
	QCOMPARE(workshop.calls("-filter_hw_device gpu"), 1);
	QCOMPARE(workshop.calls("format=nv12,hwupload[short]"), 1);
	QCOMPARE(videos::details(shortPath(run)).videoCodec, u"h264"_s);
	QCOMPARE(workshop.shortsFolderContent().size(), 1);
}

void EncodingTest::goesOnInSoftwareWhenHardwareHangs()
{
	Workshop workshop("for last; do :; done; echo half > \"${last#file:}\"; exec sleep 1000");
	workshop.setVariable(u"KESTRUNE_SAMPLE_HELPER_ENCODER"_s, u"h264_vaapi"_s);
	workshop.setVariable(u"KESTRUNE_SAMPLE_HELPER_STILL_LIMIT_MS"_s, u"15000"_s);
	const Run run = workshop.clip();
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), u"h264_vaapi failed, used libx264"_s);
	QCOMPARE(videos::details(shortPath(run)).videoCodec, u"h264"_s);
	QCOMPARE(workshop.shortsFolderContent().size(), 1);
}

void EncodingTest::goesOnInSoftwareWhenHardwareWritesRubbish_data()
{
	QTest::addColumn<QByteArray>("script");
	QTest::newRow("no video") << QByteArray("echo rubbish > \"${last#file:}\"; exit");
	QTest::newRow("nothing") << QByteArray("exit");
	QTest::newRow("too few frames") << QByteArray(
		"exec ffmpeg -v error -y -f lavfi -i color=s=1080x1920:r=25 -t 0.2 -f mp4 \"$last\"");
	// Where the frames should be there is no video, but the index around it is whole.
	QTest::newRow("frames that are rubbish") << QByteArray(
		"ffmpeg -v error -y -f lavfi -i testsrc2=s=1080x1920:r=25 -t 1 -f mp4 \"$last\"\n"
		"f=${last#file:}; head -c 3000 /dev/zero | dd of=\"$f\" bs=1 seek=2000 conv=notrunc; exit");
}

void EncodingTest::goesOnInSoftwareWhenHardwareWritesRubbish()
{
	QFETCH(const QByteArray, script);
	Workshop workshop("for last; do :; done\n" + script);
	workshop.setVariable(u"KESTRUNE_SAMPLE_HELPER_ENCODER"_s, u"h264_vaapi"_s);
	const Run run = workshop.clip();
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), u"h264_vaapi failed, used libx264"_s);
	QCOMPARE(videos::brightness(shortPath(run)).size(), videos::framesPerSecond);
}

void EncodingTest::encodesInSoftwareWhenNoHardwareWorks()
{
	Workshop workshop;
	workshop.useTool(
		u"ffmpeg"_s,
		"case \"$*\" in *-encoders*) ;; *libx264*) ;; *'-f null -') exit 1;; esac\nexec ffmpeg \"$@\"");
	const Run run = workshop.clip();
	QCOMPARE(eventName(run), u"done"_s);
	QCOMPARE(note(run), QString());
	QVERIFY(run.errorOutput.contains("libx264 encoded 1.0 s"));
}

void EncodingTest::takesTheEncoderThatIsNamed()
{
	Workshop workshop;
	workshop.setVariable(u"KESTRUNE_SAMPLE_HELPER_ENCODER"_s, u"libx264"_s);
	QCOMPARE(note(workshop.clip()), QString());
	QCOMPARE(workshop.calls("-encoders"), 0);
	QCOMPARE(workshop.calls("h264_"), 0);
	workshop.setVariable(u"KESTRUNE_SAMPLE_HELPER_ENCODER"_s, u"h264_magic"_s);
	QCOMPARE(note(workshop.clip()), u"unknown encoder \"h264_magic\", used \"libx264\""_s);
}

void EncodingTest::tellsItsSpeed()
{
	const Sandbox sandbox;
	sandbox.run(processArguments(videos::silent(), 1, lookArguments("gameplay", "none")));
	const QByteArray log = sandbox.readFile(u"sample-helper.log"_s);
	QVERIFY2(log.contains("libx264 encoded 1.0 s in ") && log.contains(" times real time)"), log.constData());
}

KESTRUNE_TEST(EncodingTest)
#include "encoding.moc"
