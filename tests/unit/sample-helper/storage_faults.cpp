#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

#include "clip_runs.hpp"
#include "host/test_program.hpp"
#include "videos.hpp"

#include <functional>

using namespace Qt::StringLiterals;

/// Whichever file system call fails or ends the helper: the replay stays unchanged, announced Shorts exist, Shorts that
/// don't exist aren't announced, state files are old or new, and the dock is told. ./run soak faults tries every call
/// of a clip, other runs every seventh.
class HelperFaultsTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void namesTheCause_data();
	void namesTheCause();
	void changesSettingsOrNothing_data();
	void changesSettingsOrNothing();
	void makesAWholeShortOrNone_data();
	void makesAWholeShortOrNone();
};

namespace {
const QJsonObject oldChat{{u"command"_s, u"!old"_s}, {u"cooldown_s"_s, 30}, {u"enabled"_s, true},
			  {u"granted"_s, true},      {u"of others"_s, 5},   {u"per_stream_cap"_s, 10},
			  {u"stream_count"_s, 3}};

const QJsonObject oldLook{{u"layout"_s, u"podcast"_s}, {u"style"_s, u"neon"_s}, {u"of others"_s, 5}};

QJsonObject newChat()
{
	QJsonObject chat = oldChat;
	chat[u"command"_s] = u"!new"_s;
	return chat;
}

const QStringList setCommand{u"--chat-set"_s, uR"({"command":"!new"})"_s};

QJsonObject stored(const Sandbox &sandbox, const QString &name)
{
	return QJsonDocument::fromJson(sandbox.readFile(name)).object();
}

void store(const Sandbox &sandbox, const QString &name, const QJsonObject &object)
{
	QVERIFY(!sandbox.writeFile(name, QJsonDocument(object).toJson()).isEmpty());
}

/// Runs the helper with a fault, for example "full 12 lasting"; see tests/support/faults.
Run runWith(Sandbox &sandbox, const QString &fault, const QStringList &arguments)
{
	sandbox.setVariable(u"LD_PRELOAD"_s, u"" FAULTS_LIBRARY ""_s);
	sandbox.setVariable(u"KESTRUNE_FAULT"_s, fault);
	Run run = sandbox.run(arguments);
	sandbox.setVariable(u"LD_PRELOAD"_s, {});
	return run;
}

/// How an error text ends that names the cause.
QString endOf(const QString &plan)
{
	return plan.startsWith(u"full"_s) ? u": the disk is full."_s : u": Permission denied."_s;
}

bool hasStruck(const Run &run)
{
	return run.errorOutput.contains("fault: ");
}

void addFaults()
{
	QTest::addColumn<QString>("fault");
	for (const char *fault :
	     {"kill %1 once", "full %1 once", "full %1 lasting", "denied %1 once", "denied %1 lasting"}) {
		QTest::newRow(fault) << QString::fromLatin1(fault);
	}
}

/// Calls `attempt` with the fault at every `step`-th call until it returns that there were fewer calls.
void sweep(const QString &fault, int step, const std::function<bool(const QString &)> &attempt)
{
	int tried = 0;
	for (int call = 1; attempt(fault.arg(call)) && !QTest::currentTestFailed(); call += step) {
		++tried;
	}
	QVERIFY2(tried > 1, "the fault never struck");
	qInfo("%s: %d runs", qPrintable(fault), tried);
}

/// Makes ffmpeg copy `finished` instead of encoding.
void useQuickFfmpeg(Sandbox &sandbox, const QString &finished)
{
	sandbox.setVariable(u"FINISHED_SHORT"_s, finished);
	sandbox.useTool(u"ffprobe"_s, "exec ffprobe \"$@\"");
	sandbox.useTool(u"ffmpeg"_s,
			"for last; do :; done\ncase \"$last\" in\n"
			"*.part) exec cp \"$FINISHED_SHORT\" \"${last#file:}\";;\nesac\nexec ffmpeg \"$@\"");
}

/// The Shorts that --recent would list.
QStringList listed(const Sandbox &sandbox)
{
	QStringList paths{};
	for (const QString &name : sandbox.shortsFolderContent().filter(u".mp4"_s)) {
		paths += sandbox.shortsFolder() + u'/' + name;
	}
	return paths;
}

QStringList announced(const Run &run)
{
	QStringList paths{};
	for (const QJsonObject &event : run.events) {
		const QJsonArray formatted = event[u"formatted"].toArray();
		for (const auto &path : formatted) {
			paths += path.toString();
		}
	}
	return paths;
}

void expect(bool holds, const QString &plan, const char *what)
{
	QVERIFY2(holds, qPrintable(plan + u": "_s + QLatin1String(what)));
}

/// Without an error the settings must be the new ones; with an error, which must name the cause, the old ones.
void expectOldOrNewSettings(const Sandbox &sandbox, const Run &run, const QString &plan)
{
	const QJsonObject left = stored(sandbox, u"chat.json"_s);
	const bool isNew = left == newChat();
	expect(isNew || left == oldChat, plan, "the settings");
	if (run.exitCode < 0) {
		expect(plan.startsWith(u"kill"_s), plan, "the end");
		return;
	}
	const QString error = run.onlyEvent()[u"error"].toString();
	expect(eventName(run) == u"chat"_s, plan, "the answer");
	expect(isNew == error.isEmpty(), plan, "what the answer says");
	expect(error.isEmpty() || error.endsWith(endOf(plan)), plan, qPrintable(error));
}

/// Announced and listed Shorts must be the same and equal `finished`; a killed run may leave one unannounced.
void expectAWholeShortOrNone(const Sandbox &sandbox, const Run &run, const QString &finished, const QString &plan)
{
	for (const QString &path : listed(sandbox)) {
		expect(videos::checksum(path) == videos::checksum(finished), plan, "the Short");
	}
	if (run.exitCode < 0) {
		expect(plan.startsWith(u"kill"_s), plan, "the end");
		return;
	}
	const QString error = run.onlyEvent()[u"error"].toString();
	expect(eventName(run) == (error.isEmpty() ? u"done"_s : u"error"_s), plan, "the answer");
	expect(announced(run) == listed(sandbox), plan, "what is announced");
	expect(error.isEmpty() != listed(sandbox).isEmpty(), plan, "what the answer says");
	// Why a program can't be started is in the log.
	const bool tellsCause = error.endsWith(endOf(plan)) || error.contains(u" couldn't be started."_s);
	expect(error.isEmpty() || tellsCause, plan, qPrintable(error));
}

void expectOldOrNewLook(const Sandbox &sandbox, const QString &plan)
{
	const QJsonObject look = stored(sandbox, u"look.json"_s);
	const QString layout = look[u"layout"].toString();
	expect(layout == u"podcast"_s || layout == u"gameplay"_s, plan, "the look");
	expect(look[u"of others"] == oldLook[u"of others"_s], plan, "what others keep with the look");
}
} // namespace

void HelperFaultsTest::namesTheCause_data()
{
	QTest::addColumn<QString>("fault");
	QTest::addColumn<QString>("cause");
	QTest::newRow("full") << u"full 1 lasting"_s << u"the disk is full"_s;
	QTest::newRow("denied") << u"denied 1 lasting"_s << u"Permission denied"_s;
}

/// In the event that the dock shows.
void HelperFaultsTest::namesTheCause()
{
	QFETCH(const QString, fault);
	QFETCH(const QString, cause);
	Sandbox sandbox;
	const QString end = u" %1: %2."_s.arg(sandbox.path(), cause);
	store(sandbox, u"chat.json"_s, oldChat);
	const QJsonObject chat = runWith(sandbox, fault, setCommand).onlyEvent();
	QCOMPARE(chat[u"event"].toString(), u"chat"_s);
	const QString complaint = chat[u"error"].toString();
	QVERIFY2(complaint.startsWith(u"Couldn't "_s) && complaint.endsWith(end), qPrintable(complaint));
	QCOMPARE(chat[u"granted"].toBool(), true);

	const QJsonObject link = runWith(sandbox, fault, {u"--link"_s, u"--no-browser"_s}).onlyEvent();
	QCOMPARE(link[u"event"].toString(), u"error"_s);
	QVERIFY2(link[u"error"].toString().endsWith(end), qPrintable(link[u"error"].toString()));

	const QJsonObject clip = runWith(sandbox, fault, processArguments(videos::silent(), 1)).onlyEvent();
	QCOMPARE(clip[u"event"].toString(), u"error"_s);
	const QString text = clip[u"error"].toString();
	QVERIFY2(text.contains(sandbox.path()) && text.endsWith(u": %1."_s.arg(cause)), qPrintable(text));
}

void HelperFaultsTest::changesSettingsOrNothing_data()
{
	addFaults();
}

void HelperFaultsTest::changesSettingsOrNothing()
{
	QFETCH(const QString, fault);
	sweep(fault, 1, [](const QString &plan) {
		Sandbox sandbox;
		store(sandbox, u"chat.json"_s, oldChat);
		const Run run = runWith(sandbox, plan, setCommand);
		expectOldOrNewSettings(sandbox, run, plan);
		// The next change succeeds.
		expect(sandbox.run(setCommand).exitCode == 0, plan, "the next change");
		expect(stored(sandbox, u"chat.json"_s) == newChat(), plan, "the next settings");
		return hasStruck(run);
	});
}

void HelperFaultsTest::makesAWholeShortOrNone_data()
{
	addFaults();
}

void HelperFaultsTest::makesAWholeShortOrNone()
{
	QFETCH(const QString, fault);
	const QByteArray replay = videos::checksum(videos::silent());
	const QStringList clip = processArguments(videos::silent(), 1, lookArguments("gameplay", "none"));
	const Sandbox first;
	const QString finished = shortPath(first.run(clip));
	QVERIFY(QFile::exists(finished));
	const int step = qEnvironmentVariableIsSet("KESTRUNE_FULL_SOAK") ? 1 : 7;
	sweep(fault, step, [&](const QString &plan) {
		Sandbox sandbox;
		store(sandbox, u"look.json"_s, oldLook);
		useQuickFfmpeg(sandbox, finished);
		const Run run = runWith(sandbox, plan, clip);
		expect(videos::checksum(videos::silent()) == replay, plan, "the replay");
		expectAWholeShortOrNone(sandbox, run, finished, plan);
		expectOldOrNewLook(sandbox, plan);
		// The next clip succeeds, and clears away what this one left.
		expect(eventName(sandbox.run(clip)) == u"done"_s, plan, "the next clip");
		expect(sandbox.shortsFolderContent().filter(u".part"_s).isEmpty(), plan, "half-made Shorts");
		expect(QDir(sandbox.path()).entryList({u"run-*"_s}).isEmpty(), plan, "scratch folders");
		return hasStruck(run);
	});
}

KESTRUNE_TEST(HelperFaultsTest)
#include "storage_faults.moc"
