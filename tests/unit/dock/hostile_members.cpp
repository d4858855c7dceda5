#include <QComboBox>
#include <QJsonArray>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QToolButton>

#include "host/dock_test.hpp"

#include <algorithm>

/// Events with members of any type and content: the dock survives them.
class HostileMembersTest : public DockTest {
	Q_OBJECT

	struct Answer {
		const char *command;
		/// Starts the command, given a linked account and a running Replay Buffer.
		const char *slot;
		/// The command's events and their members.
		QMap<QString, QStringList> events;
	};

	static QList<Answer> everyAnswer()
	{
		const QStringList chat{u"enabled"_s,        u"command"_s, u"granted"_s,     u"cooldown_s"_s,
				       u"per_stream_cap"_s, u"error"_s,   u"consent_url"_s, u"stream_count"_s};
		const QStringList failure{u"error"_s, u"relink"_s};
		return {
			{"--preview", "refreshPreview", {{u"preview"_s, {u"path"_s}}}},
			{"--recent", "refreshRecent", {{u"recent"_s, {u"folder"_s, u"items"_s}}}},
			{"--chat-get", "loadChat", {{u"chat"_s, chat}}},
			{"--poll-triggers", "pollTriggers", {{u"triggers"_s, {u"triggers"_s}}}},
			{"--check-update", "checkUpdate", {{u"update"_s, {u"update"_s, u"latest"_s, u"notes"_s}}}},
			{"--download-update",
			 "installUpdate",
			 {{u"progress"_s, {u"phase"_s, u"percent"_s}},
			  {u"update"_s, {u"update"_s, u"latest"_s, u"notes"_s}},
			  {u"error"_s, failure},
			  {u"downloaded"_s, {u"path"_s, u"latest"_s}}}},
			{"--process",
			 "clipThat",
			 {{u"pending"_s, {u"note"_s}},
			  {u"error"_s, failure},
			  {u"done"_s, {u"formatted"_s, u"note"_s}}}},
			{"--chat-set", "saveChat", {{u"chat"_s, chat}}},
			{"--link",
			 "connectAccount",
			 {{u"code"_s, {u"url"_s, u"code"_s}}, {u"linked"_s, {u"login"_s}}, {u"error"_s, failure}}},
			{"--status",
			 "refreshStatus",
			 {{u"status"_s,
			   {u"linked"_s, u"login"_s, u"offline"_s, u"error"_s, u"layout"_s, u"style"_s, u"font"_s,
			    u"layouts"_s, u"styles"_s, u"fonts"_s}}}},
		};
	}

	/// The answer's events with every member set to `value`.
	static HelperScript scriptWith(const Answer &answer, const QJsonValue &value)
	{
		HelperScript script;
		for (const auto &[kind, members] : answer.events.asKeyValueRange()) {
			QJsonObject event{{u"event"_s, kind}};
			for (const QString &member : members) {
				event[member] = value;
			}
			script.event(event);
		}
		return script;
	}

	bool nothingRuns() const
	{
		return std::ranges::all_of(dock()->findChildren<QProcess *>(),
					   [](const QProcess *run) { return run->state() == QProcess::NotRunning; });
	}

private Q_SLOTS:
	void leaveTheDockWorking_data()
	{
		QTest::addColumn<QJsonValue>("value");
		const QString controls = QString(QChar(1)) + QChar(0) + u"\r\n\t\u202e"_s;
		QTest::newRow("null") << QJsonValue();
		QTest::newRow("true") << QJsonValue(true);
		QTest::newRow("a huge number") << QJsonValue(1e300);
		QTest::newRow("a number just too large") << QJsonValue(2147483648.0);
		QTest::newRow("a fraction") << QJsonValue(-0.5);
		QTest::newRow("control characters") << QJsonValue(controls);
		QTest::newRow("a megabyte") << QJsonValue(QString(1 << 20, u'w'));
		QTest::newRow("a megabyte of markup") << QJsonValue(u"<b>"_s.repeated(350'000));
		QTest::newRow("an array of all") << QJsonValue(
			QJsonArray{QJsonValue(), true, 1e300, controls, QJsonArray{1}, QJsonObject{{u"by"_s, 7}}});
		QTest::newRow("an object") << QJsonValue(QJsonObject{{controls, QJsonObject{{u"by"_s, QJsonArray()}}}});
	}
	void leaveTheDockWorking()
	{
		QFETCH(QJsonValue, value);
		frontend().lastReplay = "/replays/a.mkv";
		qputenv("KESTRUNE_UPDATE_RUNNER", "/nowhere");
		QVERIFY(loadReady());
		// Hidden widgets are not laid out.
		for (QToolButton *section : dock()->findChildren<QToolButton *>()) {
			section->setChecked(true);
		}
		QVERIFY(child<QComboBox>(u"font"_s)->isVisible());
		// All scripts first: answers cause further runs.
		const QList<Answer> answers = everyAnswer();
		for (const Answer &answer : answers) {
			helper().on(QString::fromLatin1(answer.command), scriptWith(answer, value));
		}
		for (const Answer &answer : answers) {
			QVERIFY(invoke(answer.slot));
			frontend().emitEvent(OBS_FRONTEND_EVENT_REPLAY_BUFFER_SAVED);
		}
		QTRY_VERIFY(helper().count(u"--status"_s) >= 2);
		QTRY_VERIFY(nothingRuns());

		helper().on(u"--status"_s, HelperScript().event(linkedStatus()));
		QVERIFY(invoke("refreshStatus"));
		QTRY_VERIFY(label(u"Connected as @ana"_s) && child<QPushButton>(u"clipBtn"_s)->isEnabled());
		TRY_STATUS(pressText, informationColour);
	}

	void cleanup()
	{
		DockTest::cleanup();
		qunsetenv("KESTRUNE_UPDATE_RUNNER");
	}
};

KESTRUNE_TEST(HostileMembersTest)
#include "hostile_members.moc"
