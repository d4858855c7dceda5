#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScopeGuard>

#include "host/dock_test.hpp"

#include <linux/capability.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace {
const QJsonObject oldFile{{u"seconds"_s, 120}, {u"style"_s, u"meme"_s}, {u"of others"_s, QJsonObject{{u"x"_s, 1}}}};

/// Makes file modes bind even root.
class ModesBind {
public:
	ModesBind()
	{
		syscall(SYS_capget, &header_, before_);
		__user_cap_data_struct without[2]{before_[0], before_[1]};
		without[0].effective &= ~(1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH | 1U << CAP_FOWNER);
		syscall(SYS_capset, &header_, without);
	}
	~ModesBind() { syscall(SYS_capset, &header_, before_); }
	Q_DISABLE_COPY_MOVE(ModesBind)

private:
	__user_cap_header_struct header_{_LINUX_CAPABILITY_VERSION_3, 0};
	__user_cap_data_struct before_[2]{};
};

/// Limits the size of files: writes stop halfway, as on a full disk.
class FullDisk {
public:
	explicit FullDisk(rlim_t size_bytes)
	{
		std::signal(SIGXFSZ, SIG_IGN);
		getrlimit(RLIMIT_FSIZE, &before_);
		const rlimit full{size_bytes, before_.rlim_max};
		setrlimit(RLIMIT_FSIZE, &full);
	}
	~FullDisk()
	{
		setrlimit(RLIMIT_FSIZE, &before_);
		std::signal(SIGXFSZ, SIG_DFL);
	}
	Q_DISABLE_COPY_MOVE(FullDisk)

private:
	rlimit before_{};
};

/// Runs `work` in a forked process and kills it at the `stop`-th entry or return of a system call. False if there were
/// fewer; nothing if the system forbids tracing.
std::optional<bool> diesAt(int stop, const std::function<void()> &work)
{
	constexpr int untraceable = 77;
	const pid_t child = fork();
	if (child == 0) {
		if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
			_exit(untraceable);
		}
		std::raise(SIGSTOP);
		work();
		_exit(0);
	}

	int status = 0;
	waitpid(child, &status, 0);
	for (int passed = 0; passed < stop && WIFSTOPPED(status); ++passed) {
		ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
		waitpid(child, &status, 0);
	}
	if (WIFSTOPPED(status)) {
		kill(child, SIGKILL);
		waitpid(child, &status, 0);
		return true;
	}
	if (WIFEXITED(status) && WEXITSTATUS(status) == untraceable) {
		return std::nullopt;
	}
	return false;
}
} // namespace

/// Whatever the disk does, the choices or their backup stay readable, foreign keys survive, and the dock keeps working.
class StorageFaultsTest : public DockTest {
	Q_OBJECT

	QString filePath(const QString &suffix = {}) const { return preferencesPath() + suffix; }

	static QJsonObject objectIn(const QString &path)
	{
		QFile file(path);
		return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
						      : QJsonObject();
	}

	/// What the next OBS start reads: the file or else its backup.
	QJsonObject readable() const
	{
		const QJsonObject file = objectIn(filePath());
		return file.isEmpty() ? objectIn(filePath(u".bak"_s)) : file;
	}

	bool loadWithOldFile()
	{
		writePreferences(QJsonDocument(oldFile).toJson());
		return load() && child<QComboBox>(u"style"_s)->currentData() == u"meme"_s;
	}

	void dockSavesAgain()
	{
		choose(u"style"_s, u"clean"_s);
		QCOMPARE(objectIn(filePath())[u"style"_s].toString(), u"clean"_s);
		QCOMPARE(objectIn(filePath())[u"of others"_s], oldFile[u"of others"_s]);
	}

private Q_SLOTS:
	void aReadOnlyFolderKeepsTheOldFile()
	{
		QVERIFY(loadWithOldFile());
		const QFile::Permissions before = QFile::permissions(obs().configFolder());
		QVERIFY(QFile::setPermissions(obs().configFolder(), QFile::ReadOwner | QFile::ExeOwner));
		{
			const ModesBind modesBind;
			QVERIFY(!QFile(filePath(u".probe"_s)).open(QIODevice::WriteOnly));
			choose(u"style"_s, u"neon"_s);
		}
		QVERIFY(QFile::setPermissions(obs().configFolder(), before));
		QCOMPARE(child<QComboBox>(u"style"_s)->currentData().toString(), u"neon"_s);
		QCOMPARE(readable(), oldFile);
		dockSavesAgain();
	}

	void aFullDiskKeepsTheOldChoices_data()
	{
		QTest::addColumn<int>("room_bytes");
		QTest::newRow("no room") << 0;
		QTest::newRow("room for a byte") << 1;
		QTest::newRow("room for a part") << 40;
	}
	void aFullDiskKeepsTheOldChoices()
	{
		QFETCH(int, room_bytes);
		QVERIFY(loadWithOldFile());
		{
			const FullDisk full(static_cast<rlim_t>(room_bytes));
			for (const QString &style : {u"neon"_s, u"clean"_s, u"neon"_s}) {
				choose(u"style"_s, style);
			}
		}
		QCOMPARE(readable(), oldFile);
		dockSavesAgain();
	}

	void aFolderInThePlaceOfAFileIsNoTrouble_data()
	{
		QTest::addColumn<QString>("suffix");
		QTest::newRow("the file") << QString();
		QTest::newRow("the backup") << u".bak"_s;
		QTest::newRow("the temporary file") << u".tmp"_s;
	}
	void aFolderInThePlaceOfAFileIsNoTrouble()
	{
		QFETCH(QString, suffix);
		QVERIFY(loadWithOldFile());
		if (suffix.isEmpty()) {
			QVERIFY(QFile::rename(filePath(), filePath(u".bak"_s)));
		}
		QVERIFY(QDir().mkpath(filePath(suffix) + u"/full"_s));
		choose(u"style"_s, u"neon"_s);
		QCOMPARE(child<QComboBox>(u"style"_s)->currentData().toString(), u"neon"_s);
		const QJsonObject left = readable();
		QCOMPARE(left[u"of others"_s], oldFile[u"of others"_s]);
		QVERIFY(left[u"style"_s] == u"meme"_s || left[u"style"_s] == u"neon"_s);

		QVERIFY(QDir(filePath(suffix)).removeRecursively());
		dockSavesAgain();
	}

	void anEndAtAnySystemCallLeavesTheOldOrTheNewFile()
	{
		QVERIFY(loadWithOldFile());
		int stops = 0;
		bool died = true;
		for (int stop = 1; died; ++stop) {
			QFile::remove(filePath(u".bak"_s));
			QFile::remove(filePath(u".tmp"_s));
			writePreferences(QJsonDocument(oldFile).toJson());
			const std::optional<bool> answer = diesAt(stop, [this] { choose(u"style"_s, u"neon"_s); });
			if (!answer) {
				QSKIP("this machine does not allow tracing system calls");
			}
			died = *answer;
			stops = stop;

			const QJsonObject left = readable();
			QVERIFY2(left[u"of others"_s] == oldFile[u"of others"_s], qPrintable(QString::number(stop)));
			QVERIFY2(left[u"style"_s] == u"meme"_s || left[u"style"_s] == u"neon"_s,
				 qPrintable(QString::number(stop)));
		}
		QCOMPARE(readable()[u"style"_s].toString(), u"neon"_s);
		qInfo("ended at each of %d moments", stops - 1);
		QVERIFY(stops > 20);
		dockSavesAgain();
	}
};

KESTRUNE_TEST(StorageFaultsTest)
#include "storage_faults.moc"
