#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTest>

#include "clip_runs.hpp"
#include "host/system.hpp"
#include "host/test_program.hpp"

using namespace Qt::StringLiterals;

class BackgroundProcessTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void diesWithTheHelper();
};

void BackgroundProcessTest::diesWithTheHelper()
{
	// The fake helper, as ffprobe: notes its process id and hangs.
	Sandbox sandbox;
	sandbox.setVariable(u"FAKE_HELPER_DIR"_s, sandbox.path());
	sandbox.writeFile(u".json"_s, R"([{"do": "hang"}])");
	const QString folder = sandbox.path(u"tools"_s);
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_FFMPEG"_s, folder);
	const QString suffix = QFileInfo(fakeHelper()).suffix();
	const QString program = folder + u"/ffprobe"_s + (suffix.isEmpty() ? QString() : u'.' + suffix);
	QVERIFY(QDir().mkpath(folder) && QFile::copy(fakeHelper(), program));

	const std::unique_ptr<QProcess> helper =
		sandbox.start(processArguments(sandbox.writeFile(u"replay.mkv"_s, "x"), 30));
	QTRY_VERIFY(sandbox.readFile(u"runs"_s).endsWith('\n'));
	const qint64 id = QJsonDocument::fromJson(sandbox.readFile(u"runs"_s))[u"pid"].toInteger();
	QVERIFY(id > 0 && isAlive(id));
	helper->kill();
	QVERIFY(helper->waitForFinished(60000));
	QTRY_VERIFY(!isAlive(id));
}

KESTRUNE_TEST(BackgroundProcessTest)
#include "background_process.moc"
