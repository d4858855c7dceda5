#include <QFile>
#include <QTest>

#include "clip_runs.hpp"
#include "host/test_program.hpp"

using namespace Qt::StringLiterals;

/// --doctor, which is read by people.
class DoctorTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void findsThatShortsCanBeMadeAndLeavesNothingBehind();
	void missesFfmpeg();
	void missesFfprobe();
	void findsAnFfmpegThatCannotEncode();
	void findsAnFfmpegThatDrawsNoText();
	void namesTheFontThatStandsIn();
	void findsTheModelByItself();
	void tellsAFileThatIsNoModel();
	void hearsAClipOnTrial();
	void tellsWrongSettings();
	void findsAFolderThatCannotBeWritten();
};

namespace {
Run doctor(const Sandbox &sandbox)
{
	return sandbox.run({u"--doctor"_s});
}

/// The lines from the one that contains `text` to the next one that is no remedy; empty when there is none.
QByteArray finding(const Run &run, const QByteArray &text)
{
	QByteArray found{};
	const QByteArray output = QByteArray(run.output).replace("\r\n", "\n");
	for (const QByteArray &line : output.split('\n')) {
		if (found.isEmpty() ? line.contains(text) : line.trimmed().startsWith("->")) {
			found += line.trimmed() + '\n';
		} else if (!found.isEmpty()) {
			break;
		}
	}
	return found;
}

/// An ffmpeg that does nothing, for tests of something else; `script` may do some of it.
void useIdleFfmpeg(Sandbox &sandbox, const QByteArray &script = {})
{
	sandbox.useTool(u"ffprobe"_s, "echo 'ffprobe version 7'");
	sandbox.useTool(u"ffmpeg"_s, script + "echo 'ffmpeg version 7'");
}

/// A font that libass says it takes, as it says it.
void useFonts(Sandbox &sandbox, const QByteArray &taken)
{
	useIdleFfmpeg(sandbox, "case \"$*\" in *trial.ass*) exec ffmpeg \"$@\";;\n"
			       "*font.ass*) echo '[Parsed_ass_0 @ 0x55] fontselect: (X, 700, 0) -> " +
				       taken + "' >&2; exit 0;; esac\n");
}
} // namespace

void DoctorTest::findsThatShortsCanBeMadeAndLeavesNothingBehind()
{
	const Sandbox sandbox;
	const Run run = doctor(sandbox);
	QCOMPARE(run.exitCode, 0);
	QVERIFY2(run.events.isEmpty(), "it is for people");
	QVERIFY2(run.errorOutput.isEmpty(), run.errorOutput.constData());
	for (const char *text :
	     {"ok       ffmpeg ", "ok       ffprobe ", "ok       libx264 works", " made on trial in ",
	      "ok       ffmpeg draws captions", "GB free", "Shorts can be made"}) {
		QVERIFY2(run.output.contains(text), run.output.constData());
	}
	QVERIFY(!run.output.contains("PROBLEM"));
	QCOMPARE(sandbox.shortsFolderContent(), QStringList());
	QStringList entries = QDir(sandbox.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
	entries.sort();
	QCOMPARE(entries, (QStringList{u"Shorts"_s, u"sample-helper.log"_s}));
}

void DoctorTest::missesFfmpeg()
{
	Sandbox sandbox;
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_FFMPEG"_s, sandbox.path(u"empty"_s));
	const Run run = doctor(sandbox);
	QCOMPARE(run.exitCode, 1);
	QVERIFY2(finding(run, "ffmpeg isn't in ").startsWith("PROBLEM"), run.output.constData());
	QVERIFY2(finding(run, "ffmpeg isn't in ").contains("-> "), run.output.constData());
	QVERIFY(run.output.contains("No Short can be made yet: see 2 problems above."));
}

void DoctorTest::missesFfprobe()
{
	Sandbox sandbox;
	sandbox.useTool(u"ffmpeg"_s, "exec ffmpeg \"$@\"");
	const Run run = doctor(sandbox);
	QCOMPARE(run.exitCode, 1);
	QVERIFY2(finding(run, "ffprobe isn't in ").startsWith("PROBLEM"), run.output.constData());
	QVERIFY(run.output.contains("see one problem above."));
}

void DoctorTest::findsAnFfmpegThatCannotEncode()
{
	Sandbox sandbox;
	sandbox.useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
	sandbox.useTool(u"ffmpeg"_s, "case \"$*\" in *libx264*) echo \"Unknown encoder 'libx264'\" >&2; exit 1;;\n"
				     "*-encoders*) exit 0;; esac\nexec ffmpeg \"$@\"");
	const Run run = doctor(sandbox);
	QCOMPARE(run.exitCode, 1);
	QVERIFY2(finding(run, "this ffmpeg has no libx264").startsWith("missing"), run.output.constData());
	QVERIFY2(finding(run, "no Short could be made on trial").startsWith("PROBLEM"), run.output.constData());
}

void DoctorTest::findsAnFfmpegThatDrawsNoText()
{
	Sandbox sandbox;
	sandbox.useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
	sandbox.useTool(u"ffmpeg"_s, "case \"$*\" in *ass=*) echo \"No such filter: 'ass'\" >&2; exit 1;; esac\n"
				     "exec ffmpeg \"$@\"");
	const Run run = doctor(sandbox);
	QCOMPARE(run.exitCode, 0);
	QVERIFY2(finding(run, "this ffmpeg can't draw captions").startsWith("missing"), run.output.constData());
	QVERIFY2(finding(run, "this ffmpeg can't draw captions").contains("-> "), run.output.constData());
}

void DoctorTest::namesTheFontThatStandsIn()
{
	Sandbox sandbox;
	useFonts(sandbox, "/usr/share/fonts/DejaVuSans-Bold.ttf, 0, DejaVuSans-Bold");
	const Run run = doctor(sandbox);
	QCOMPARE(finding(run, "font Bangers"), QByteArray("missing  font Bangers: DejaVuSans-Bold stands in for it\n"
							  "-> https://fonts.google.com/specimen/Bangers\n"));
	useFonts(sandbox, "/usr/share/fonts/bangers.ttf, 0, Bangers-Regular");
	QCOMPARE(finding(doctor(sandbox), "font Bangers"), QByteArray("ok       font Bangers\n"));
}

void DoctorTest::findsTheModelByItself()
{
	Sandbox sandbox;
	useIdleFfmpeg(sandbox);
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_WHISPER"_s, u"/nonexistent/whisper-cli"_s);
	QByteArray missing = finding(doctor(sandbox), "no speech model in ");
	QVERIFY2(missing.startsWith("missing") && missing.contains("-> curl "), missing.constData());
	sandbox.writeFile(u"models/ggml-tiny.bin"_s, "lmgg");
	const QString model = sandbox.writeFile(u"models/ggml-base.bin"_s, "lmgg and more");
	const Run run = doctor(sandbox);
	QVERIFY2(finding(run, "speech model ").startsWith("ok       speech model " + model.toUtf8()),
		 run.output.constData());
	QVERIFY2(finding(run, "whisper-cli, isn't there").startsWith("missing"), run.output.constData());
}

void DoctorTest::tellsAFileThatIsNoModel()
{
	Sandbox sandbox;
	useIdleFfmpeg(sandbox);
	// What browsers save when the address was wrong.
	sandbox.writeFile(u"models/ggml-base.bin"_s, "<html>Not found</html>");
	const QByteArray found = finding(doctor(sandbox), "ggml-base.bin is no speech model");
	QVERIFY2(found.startsWith("wrong"), found.constData());
}

void DoctorTest::hearsAClipOnTrial()
{
	Sandbox sandbox;
	sandbox.writeFile(u"models/ggml-base.bin"_s, "lmgg");
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_WHISPER"_s,
			    sandbox.writeScript(u"tools/whisper-cli"_s, "echo '{\"transcription\":[]}' > speech.json"));
	QVERIFY2(finding(doctor(sandbox), "listened to a clip on trial").startsWith("ok"), "it works");
	sandbox.writeScript(u"tools/whisper-cli"_s, "exit 1");
	const Run run = doctor(sandbox);
	QCOMPARE(run.exitCode, 0);
	QVERIFY2(finding(run, "speech can't be recognised: whisper-cli failed.").startsWith("wrong"),
		 run.output.constData());
}

void DoctorTest::tellsWrongSettings()
{
	Sandbox sandbox;
	useIdleFfmpeg(sandbox);
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_ENCODER"_s, u"h265"_s);
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_OUTPTU"_s, u"/shorts"_s);
	sandbox.writeFile(u"settings.ini"_s, "LINK_MS=soon\nCAMERA=left\n");
	const Run run = doctor(sandbox);
	for (const char *text :
	     {"KESTRUNE_SAMPLE_HELPER_OUTPTU is no setting.", "unknown encoder \"h265\"", "settings.ini",
	      "LINK_MS needs a number of milliseconds, not \"soon\".", "KESTRUNE_SAMPLE_HELPER_CAMERA"}) {
		QVERIFY2(run.output.contains(text), run.output.constData());
	}
}

void DoctorTest::findsAFolderThatCannotBeWritten()
{
	Sandbox sandbox;
	const QString file = sandbox.writeFile(u"a file"_s, "x");
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_OUTPUT"_s, file + u"/Shorts"_s);
	const Run run = doctor(sandbox);
	QCOMPARE(run.exitCode, 1);
	QVERIFY2(finding(run, "can't be written to").startsWith("PROBLEM  Shorts: "), run.output.constData());
}

KESTRUNE_TEST(DoctorTest)
#include "doctor.moc"
