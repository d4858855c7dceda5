#include <QComboBox>
#include <QDir>
#include <QJsonDocument>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>
#include <QScreen>

#include "host/dock_test.hpp"
#include "host/hotkeys.hpp"
#include "host/system.hpp"
#include "pressed_keys.hpp"
#include "replay_buffer_output.hpp"

#include <windows.h>

#include <sddl.h>

namespace {
/// While it lives, nobody may write into a folder.
class ReadOnlyFolder {
public:
	explicit ReadOnlyFolder(const QString &path)
		: path_(QDir::toNativeSeparators(path).toStdWString())
	{
		permit(L"D:P(A;OICI;GRGX;;;WD)");
	}
	~ReadOnlyFolder() { permit(L"D:P(A;OICI;FA;;;WD)"); }
	Q_DISABLE_COPY_MOVE(ReadOnlyFolder)

private:
	void permit(const wchar_t *rights) const
	{
		PSECURITY_DESCRIPTOR descriptor = nullptr;
		if (!ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1, &descriptor,
									  nullptr) ||
		    !SetFileSecurityW(path_.c_str(), DACL_SECURITY_INFORMATION, descriptor)) {
			qFatal("cannot set the rights of %ls", path_.c_str());
		}
		LocalFree(descriptor);
	}

	std::wstring path_;
};
} // namespace

/// The main job with OBS's own libobs, Replay Buffer and ffmpeg, the sample helper, and a key pressed on the keyboard.
/// Only OBS's window is not the real one. The Short and pictures of the window are kept in the folder KESTRUNE_KEPT,
/// when that is set.
class MainJobTest : public DockTest {
	Q_OBJECT

	std::optional<ReplayBufferOutput> replayBuffer_{};
	QString user_{};

	/// A folder of the user's, which exists.
	QString folder(const QString &name) const
	{
		const QString path = user_ + u'/' + name;
		QDir().mkpath(path);
		return path;
	}
	QString shortsFolder() const { return folder(u"Videos/Shorts"_s); }

	/// Connects the account, as a click in the browser would.
	static bool link()
	{
		QProcess helper;
		helper.start(u"" SAMPLE_HELPER ""_s, {u"--link"_s, u"--no-browser"_s});
		return helper.waitForFinished(30000) && helper.exitCode() == 0;
	}

	/// Everything in this user's folder, and enough recorded for a Short; ready to clip with Ctrl+Shift+C.
	bool makeReady(const QString &user)
	{
		user_ = user;
		setEnvironment("KESTRUNE_HELPER", u"" SAMPLE_HELPER ""_s);
		setEnvironment("KESTRUNE_SAMPLE_HELPER_HOME", folder(u"AppData/Sample helper"_s));
		setEnvironment("KESTRUNE_SAMPLE_HELPER_OUTPUT", shortsFolder());
		replayBuffer_.emplace(folder(u"Videos"_s));
		if (!replayBuffer_->isActive() || !link() || !load()) {
			return false;
		}
		bindHotkey(findHotkey("kestrune.clip_that")->id, {{controlKey | shiftKey, OBS_KEY_C}});
		invoke("refreshStatus");
		return QTest::qWaitFor([this] { return child<QPushButton>(u"clipBtn"_s)->isEnabled(); }, patience_ms) &&
		       QTest::qWaitFor([this] { return replayBuffer_->recorded_s() >= 4; }, patience_ms);
	}

	void pressHotkey()
	{
		const PressedKeys pressed({VK_CONTROL, VK_SHIFT, 'C'});
		QTRY_VERIFY(status()->text().startsWith(u"Saving the last "));
	}

	/// Keeps a picture of the window as it is on the screen.
	static void keepPicture(const QString &name)
	{
		const QString kept = qEnvironmentVariable("KESTRUNE_KEPT");
		if (!kept.isEmpty()) {
			auto *window = frontend().mainWindow;
			window->repaint();
			const QPixmap picture = QGuiApplication::primaryScreen()->grabWindow(window->winId());
			QVERIFY(picture.save(QDir(kept).filePath(name + u".png"_s)));
		}
	}
	static void keepShort(const QString &path)
	{
		const QString kept = qEnvironmentVariable("KESTRUNE_KEPT");
		if (!kept.isEmpty()) {
			QVERIFY(QFile::copy(path, QDir(kept).filePath(QFileInfo(path).fileName())));
		}
	}

	/// The replays that OBS has saved.
	QStringList replays() const { return QDir(user_ + u"/Videos"_s).entryList({u"*.mkv"_s}, QDir::Files); }
	QStringList shorts() const { return QDir(shortsFolder()).entryList(QDir::Files | QDir::Hidden); }

	/// What ffprobe tells of the Short's pictures and of its sound.
	QStringList streams(const QString &path) const
	{
		QProcess probe;
		probe.start(u"ffprobe"_s, {u"-v"_s, u"error"_s, u"-show_entries"_s, u"stream=codec_name,width,height"_s,
					   u"-of"_s, u"csv=p=0"_s, path});
		probe.waitForFinished(30000);
		return QString::fromUtf8(probe.readAllStandardOutput()).simplified().split(u' ');
	}

	static bool decodes(const QString &path)
	{
		QProcess ffmpeg;
		ffmpeg.start(u"ffmpeg"_s,
			     {u"-v"_s, u"error"_s, u"-nostdin"_s, u"-i"_s, path, u"-f"_s, u"null"_s, u"-"_s});
		return ffmpeg.waitForFinished(120000) && ffmpeg.exitCode() == 0 &&
		       ffmpeg.readAllStandardError().isEmpty();
	}

private Q_SLOTS:
	void init()
	{
		DockTest::init();
		// Pictures are for people: OBS's own colours, and all of the dock.
		qApp->setStyle(u"Fusion"_s);
		qApp->setPalette(QPalette(QColor(60, 64, 77), QColor(29, 31, 38)));
		static_cast<QWidget *>(frontend().mainWindow)->resize(400, 900);
	}
	void cleanup()
	{
		replayBuffer_.reset();
		DockTest::cleanup();
		qunsetenv("KESTRUNE_SAMPLE_HELPER_HOME");
		qunsetenv("KESTRUNE_SAMPLE_HELPER_OUTPUT");
	}

	void theHotkeyMakesAShort_data()
	{
		QTest::addColumn<QString>("user");
		QTest::newRow("plain") << u"ana"_s;
		QTest::newRow("blanks and foreign letters") << u"Users/Zoë Größe 録画"_s;
		QTest::newRow("longer than 260 letters")
			<< u"a folder of sixty letters and as many more as it takes ü/"_s.repeated(5);
	}
	void theHotkeyMakesAShort()
	{
		QFETCH(QString, user);
		QVERIFY(makeReady(scratchPath(user)));
		keepPicture(u"1-before"_s);
		pressHotkey();
		QTRY_VERIFY2(statusIs(u"Clip saved. Making your Short (about 1–3 min)…"_s, informationColour),
			     qPrintable(status()->text()));
		keepPicture(u"2-during"_s);
		QCOMPARE(replays().size(), 1);
		QTRY_VERIFY2_WITH_TIMEOUT(status()->text().startsWith(u"Your Short is ready: "),
					  qPrintable(status()->text()), 180000);

		QCOMPARE(shorts().size(), 1);
		const QString name = shorts().front();
		QVERIFY2(status()->text().contains(name), qPrintable(status()->text()));
		const auto *recent = dock()->findChild<QListWidget *>();
		QTRY_COMPARE(recent->item(0)->text(), name);
		const QString path = QDir(shortsFolder()).absoluteFilePath(name);
		QCOMPARE(recent->item(0)->data(Qt::UserRole).toString(), path);
		QCOMPARE(streams(path), QStringList({u"h264,1080,1920"_s, u"aac"_s}));
		QVERIFY(decodes(path));
		keepPicture(u"3-after"_s);
		keepShort(path);
	}

	void aHelperThatCrashesLosesNoReplay()
	{
		QVERIFY(makeReady(scratchPath(u"ana"_s)));
		setEnvironment("KESTRUNE_HELPER", u"" FAKE_HELPER ""_s);
		helper().on(u"--process"_s, HelperScript().crash());
		pressHotkey();
		TRY_STATUS(u"The Kestrune helper stopped unexpectedly (code -1073741819). "
			   u"Details: %APPDATA%\\Kestrune\\logs\\helper.log"_s,
			   errorColour);
		QCOMPARE(replays().size(), 1);
		QVERIFY(decodes(user_ + u"/Videos/"_s + replays().front()));
		QCOMPARE(shorts(), QStringList());

		setEnvironment("KESTRUNE_HELPER", u"" SAMPLE_HELPER ""_s);
		pressHotkey();
		QTRY_VERIFY2_WITH_TIMEOUT(status()->text().startsWith(u"Your Short is ready: "),
					  qPrintable(status()->text()), 180000);
		QCOMPARE(shorts().size(), 1);
	}

	void aFolderThatCannotBeWrittenIsNamed()
	{
		QVERIFY(makeReady(scratchPath(u"ana"_s)));
		{
			const ReadOnlyFolder closed(shortsFolder());
			if (QFile(shortsFolder() + u"/probe"_s).open(QIODevice::WriteOnly)) {
				QSKIP("nothing is closed to this user");
			}
			pressHotkey();
			QTRY_VERIFY2_WITH_TIMEOUT(status()->text().startsWith(u"Clip kept locally: "),
						  qPrintable(status()->text()), 180000);
			qInfo() << status()->text();
			QCOMPARE(replays().size(), 1);
		}
		QCOMPARE(shorts(), QStringList());
		pressHotkey();
		QTRY_VERIFY2_WITH_TIMEOUT(status()->text().startsWith(u"Your Short is ready: "),
					  qPrintable(status()->text()), 180000);
	}
};

KESTRUNE_TEST(MainJobTest)
#include "main_job.moc"
