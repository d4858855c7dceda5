#include <QDateTime>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>
#include <QUrl>

#include "host/test_program.hpp"
#include "sandbox.hpp"
#include "support/files.hpp"

#include <vector>

using namespace Qt::StringLiterals;

class ChatTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void beginsWithDefaults();
	void storesSettings();
	void keepsWhatIsNotNamed();
	void refusesBadSettings();
	void asksForConsentAndGetsItAMomentLater();
	void keepsConsentWhileSwitchedOff();
	void reportsTriggersOnce();
	void triggersOnTheCommandOnly();
	void ignoresTheChatWhileOff();
	void honoursTheCooldown();
	void honoursTheCapOfAStream();
	void losesNoMessageOfSideBySideRuns();
	void goesOnAfterTheClockWasAhead();
	void passesOnNoMarkupInNames();
	void holdsNoMoreThanAChatCan();
	void saysWhenItCannotStoreForALock();
};

namespace {
const QStringList getSwitch{u"--chat-get"_s};
const QStringList pollSwitch{u"--poll-triggers"_s};

Run set(const Sandbox &sandbox, const char *json)
{
	return sandbox.run({u"--chat-set"_s, QString::fromUtf8(json)});
}

void say(const Sandbox &sandbox, const QString &name, const QString &text = {})
{
	QStringList arguments{u"--say"_s, name};
	if (!text.isEmpty()) {
		arguments += text;
	}
	QCOMPARE(sandbox.run(arguments).exitCode, 0);
}

QStringList poll(const Sandbox &sandbox)
{
	const QJsonObject event = sandbox.run(pollSwitch).onlyEvent();
	if (event[u"event"].toString() != u"triggers") {
		return {u"(no triggers event)"_s};
	}
	QStringList names{};
	const QJsonArray triggers = event[u"triggers"].toArray();
	for (const auto &trigger : triggers) {
		names += trigger[u"by"].toString();
	}
	return names;
}

int streamCount(const Sandbox &sandbox)
{
	return sandbox.run(getSwitch).onlyEvent()[u"stream_count"].toInt(-1);
}
} // namespace

void ChatTest::beginsWithDefaults()
{
	const Run run = Sandbox().run(getSwitch);
	QCOMPARE(run.exitCode, 0);
	const QJsonObject expected{{u"event"_s, u"chat"_s}, {u"enabled"_s, false},     {u"command"_s, u"!rune"_s},
				   {u"cooldown_s"_s, 30},   {u"per_stream_cap"_s, 10}, {u"granted"_s, false},
				   {u"stream_count"_s, 0}};
	QCOMPARE(run.onlyEvent(), expected);
}

void ChatTest::storesSettings()
{
	const Sandbox sandbox;
	const Run run = set(sandbox, R"({"command":"!härte","cooldown_s":60,"enabled":true,"per_stream_cap":0})");
	QCOMPARE(run.exitCode, 0);
	const QJsonObject expected{{u"event"_s, u"chat"_s}, {u"enabled"_s, true},     {u"command"_s, u"!härte"_s},
				   {u"cooldown_s"_s, 60},   {u"per_stream_cap"_s, 0}, {u"granted"_s, true},
				   {u"stream_count"_s, 0}};
	QCOMPARE(run.onlyEvent(), expected);
	QCOMPARE(sandbox.run(getSwitch).onlyEvent(), expected);
}

void ChatTest::keepsWhatIsNotNamed()
{
	const Sandbox sandbox;
	set(sandbox, R"({"command":"!one","cooldown_s":77})");
	const QJsonObject event = set(sandbox, R"({"command":"!two","stream_count":50,"granted":true})").onlyEvent();
	QCOMPARE(event[u"command"].toString(), u"!two"_s);
	QCOMPARE(event[u"cooldown_s"].toInt(), 77);
	QCOMPARE(event[u"stream_count"].toInt(), 0);
	QCOMPARE(event[u"granted"].toBool(), false);
}

void ChatTest::refusesBadSettings()
{
	const Sandbox sandbox;
	const QJsonObject before = set(sandbox, R"({"command":"!kept","cooldown_s":44,"enabled":true})").onlyEvent();
	for (const char *json :
	     {"enabled=yes", "", "[true]", R"({"command":"!r)", R"({"command":""})", R"({"command":"!"})",
	      R"({"command":"rune"})", R"({"command":"!my rune"})", R"({"command":"!my\trune"})", R"({"command":5})",
	      R"({"enabled":"yes"})", R"({"cooldown_s":-1})", R"({"cooldown_s":1e300})", R"({"cooldown_s":10.5})",
	      R"({"per_stream_cap":"ten"})", R"({"per_stream_cap":101})"}) {
		const Run run = set(sandbox, json);
		QVERIFY2(run.exitCode == 1, json);
		const QJsonObject event = run.onlyEvent();
		QVERIFY2(event[u"event"].toString() == u"chat"_s, json);
		QVERIFY2(!event[u"error"].toString().isEmpty(), json);
		// With these two the dock keeps polling; without "command" it keeps its fields.
		QVERIFY2(event[u"enabled"].toBool(), json);
		QVERIFY2(event[u"granted"].toBool(), json);
		QVERIFY2(!event.contains(u"command"), json);
	}
	QCOMPARE(sandbox.run(getSwitch).onlyEvent(), before);
}

void ChatTest::asksForConsentAndGetsItAMomentLater()
{
	Sandbox sandbox;
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_CONSENT_MS"_s, u"600000"_s);
	const QJsonObject asked = set(sandbox, R"({"enabled":true})").onlyEvent();
	QCOMPARE(asked[u"granted"].toBool(true), false);
	QVERIFY(QFile::exists(QUrl(asked[u"consent_url"].toString()).toLocalFile()));
	QCOMPARE(sandbox.run(getSwitch).onlyEvent()[u"granted"].toBool(true), false);

	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_CONSENT_MS"_s, u"200"_s);
	QTRY_VERIFY(sandbox.run(getSwitch).onlyEvent()[u"granted"].toBool());
	QVERIFY(!sandbox.run(getSwitch).onlyEvent().contains(u"consent_url"));
}

void ChatTest::keepsConsentWhileSwitchedOff()
{
	Sandbox sandbox;
	set(sandbox, R"({"enabled":true})");
	set(sandbox, R"({"enabled":false})");
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_CONSENT_MS"_s, u"600000"_s);
	QCOMPARE(set(sandbox, R"({"enabled":true})").onlyEvent()[u"granted"].toBool(), true);
}

void ChatTest::reportsTriggersOnce()
{
	const Sandbox sandbox;
	set(sandbox, R"({"enabled":true,"cooldown_s":0,"per_stream_cap":0})");
	QCOMPARE(poll(sandbox), QStringList());
	say(sandbox, u"ana"_s);
	say(sandbox, QString::fromUtf8("Müller 🎮"));
	QCOMPARE(poll(sandbox), (QStringList{u"ana"_s, QString::fromUtf8("Müller 🎮")}));
	QCOMPARE(poll(sandbox), QStringList());
	QCOMPARE(streamCount(sandbox), 2);
}

void ChatTest::triggersOnTheCommandOnly()
{
	const Sandbox sandbox;
	set(sandbox, R"({"enabled":true,"cooldown_s":0,"per_stream_cap":0})");
	say(sandbox, u"ana"_s, u"!rune"_s);
	say(sandbox, u"in capitals"_s, u"!RUNE"_s);
	say(sandbox, u"with more behind"_s, u"  !rune that was great"_s);
	say(sandbox, u"with more in front"_s, u"say !rune"_s);
	say(sandbox, u"a longer word"_s, u"!runes"_s);
	say(sandbox, u"another word"_s, u"hello"_s);
	QCOMPARE(poll(sandbox), (QStringList{u"ana"_s, u"in capitals"_s, u"with more behind"_s}));
	QCOMPARE(streamCount(sandbox), 3);
}

void ChatTest::ignoresTheChatWhileOff()
{
	const Sandbox sandbox;
	say(sandbox, u"ana"_s);
	QCOMPARE(poll(sandbox), QStringList());
	set(sandbox, R"({"enabled":true})");
	QCOMPARE(poll(sandbox), QStringList());
}

void ChatTest::honoursTheCooldown()
{
	const Sandbox sandbox;
	set(sandbox, R"({"enabled":true,"cooldown_s":3600})");
	say(sandbox, u"ana"_s);
	say(sandbox, u"ben"_s);
	QCOMPARE(poll(sandbox), QStringList{u"ana"_s});
	say(sandbox, u"cleo"_s);
	QCOMPARE(poll(sandbox), QStringList());
	set(sandbox, R"({"cooldown_s":0})");
	say(sandbox, u"dora"_s);
	QCOMPARE(poll(sandbox), QStringList{u"dora"_s});
}

void ChatTest::honoursTheCapOfAStream()
{
	const Sandbox sandbox;
	set(sandbox, R"({"enabled":true,"cooldown_s":0,"per_stream_cap":2})");
	for (const char *name : {"ana", "ben", "cleo"}) {
		say(sandbox, QLatin1String(name));
	}
	QCOMPARE(poll(sandbox), (QStringList{u"ana"_s, u"ben"_s}));
	say(sandbox, u"dora"_s);
	QCOMPARE(poll(sandbox), QStringList());
	QCOMPARE(sandbox.run({u"--new-stream"_s}).onlyEvent()[u"stream_count"].toInt(-1), 0);
	say(sandbox, u"ella"_s);
	QCOMPARE(poll(sandbox), QStringList{u"ella"_s});
}

void ChatTest::losesNoMessageOfSideBySideRuns()
{
	const Sandbox sandbox;
	set(sandbox, R"({"enabled":true,"cooldown_s":0,"per_stream_cap":0})");
	std::vector<std::unique_ptr<QProcess>> processes{};
	QStringList expected{};
	for (int i = 0; i < 12; ++i) {
		expected += u"viewer%1"_s.arg(i, 2, 10, QChar(u'0'));
		processes.push_back(sandbox.start({u"--say"_s, expected.last()}));
	}
	QStringList seen{};
	for (const std::unique_ptr<QProcess> &process : processes) {
		seen += poll(sandbox);
		QCOMPARE(finish(*process).exitCode, 0);
	}
	seen += poll(sandbox);
	seen.sort();
	QCOMPARE(seen, expected);
	QCOMPARE(streamCount(sandbox), 12);
}

void ChatTest::goesOnAfterTheClockWasAhead()
{
	Sandbox sandbox;
	sandbox.setVariable(u"KESTRUNE_SAMPLE_HELPER_CONSENT_MS"_s, u"200"_s);
	const double tomorrow_ms = static_cast<double>(QDateTime::currentMSecsSinceEpoch()) + 86'400'000;
	const QJsonObject ahead{{u"enabled"_s, true},
				{u"cooldown_s"_s, 30},
				{u"consent_asked_ms"_s, tomorrow_ms},
				{u"last_use_ms"_s, tomorrow_ms}};
	sandbox.writeFile(u"chat.json"_s, QJsonDocument(ahead).toJson());
	QTRY_VERIFY(sandbox.run(getSwitch).onlyEvent()[u"granted"].toBool());
	say(sandbox, u"ana"_s);
	say(sandbox, u"ben"_s);
	QCOMPARE(poll(sandbox), QStringList{u"ana"_s});
}

void ChatTest::passesOnNoMarkupInNames()
{
	const Sandbox sandbox;
	set(sandbox, R"({"enabled":true})");
	say(sandbox, u"<img src='x'>"_s);
	QCOMPARE(poll(sandbox), QStringList{u"‹img src='x'>"_s});
}

void ChatTest::holdsNoMoreThanAChatCan()
{
	const Sandbox sandbox;
	set(sandbox, R"({"enabled":true})");
	const QString flood(100'000, QChar(1));
	for (int i = 0; i < 20; ++i) {
		say(sandbox, flood, flood);
	}
	QVERIFY(sandbox.readFile(u"chat.json"_s).size() < 200'000);
	const QString command = u"!"_s + QString(500, u'x');
	const QJsonObject event = set(sandbox, qUtf8Printable(u"{\"command\":\"%1\"}"_s.arg(command))).onlyEvent();
	QVERIFY(event[u"error"].toString().contains(u"longer than a message"_s));
}

void ChatTest::saysWhenItCannotStoreForALock()
{
	const Sandbox sandbox;
	set(sandbox, R"({"enabled":true})");
	// As a helper would that is suspended in the middle of a save.
	QFile lock(sandbox.path(u"state.lock"_s));
	QVERIFY(lock.open(QIODevice::ReadWrite));
	files::lock(lock, 0);
	const Run run = set(sandbox, R"({"command":"!other"})");
	QCOMPARE(run.exitCode, 1);
	const QJsonObject event = run.onlyEvent();
	QCOMPARE(event[u"event"].toString(), u"chat"_s);
	QCOMPARE(event[u"error"].toString(),
		 u"Couldn't lock state.lock in %1: another run of the helper holds it."_s.arg(sandbox.path()));
	QCOMPARE(event[u"granted"].toBool(), true);
	lock.close();
	QCOMPARE(set(sandbox, R"({"command":"!other"})").exitCode, 0);
}

KESTRUNE_TEST(ChatTest)
#include "chat.moc"
