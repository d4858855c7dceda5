#include <QJsonObject>
#include <QTest>

#include "chat/chat_texts.hpp"
#include "host/test_program.hpp"

using namespace Qt::StringLiterals;

class ChatTextsTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void describesTheState_data()
	{
		QTest::addColumn<QJsonObject>("chat");
		QTest::addColumn<bool>("granted");
		QTest::addColumn<QString>("text");

		const QString on = u"On: mods can type <b>%1</b> (%2 used this stream)."_s;
		const QString step = u"One more step: <a href=\"%1\">allow Kestrune to read your Twitch chat</a>. "
				     u"It switches on by itself afterwards."_s;
		QTest::newRow("nothing") << QJsonObject() << false << u"Off."_s;
		QTest::newRow("off") << QJsonObject{{u"enabled"_s, false}, {u"granted"_s, true}} << false << u"Off."_s;
		QTest::newRow("on") << QJsonObject{{u"enabled"_s, true},
						   {u"granted"_s, true},
						   {u"command"_s, u"!rune"_s},
						   {u"stream_count"_s, 3}}
				    << true << on.arg(u"!rune"_s, u"3"_s);
		QTest::newRow("on, no members")
			<< QJsonObject{{u"enabled"_s, true}, {u"granted"_s, true}} << true << on.arg(QString(), u"0"_s);
		QTest::newRow("on, command escaped and never substituted into")
			<< QJsonObject{{u"enabled"_s, true}, {u"granted"_s, true}, {u"command"_s, u"<b>&%2"_s}} << true
			<< u"On: mods can type <b>&lt;b&gt;&amp;%2</b> (0 used this stream)."_s;
		QTest::newRow("not granted")
			<< QJsonObject{{u"enabled"_s, true}, {u"consent_url"_s, u"https://a.example/?b=1&c=\"d\""_s}}
			<< false << step.arg(u"https://a.example/?b=1&amp;c=&quot;d&quot;"_s);
		QTest::newRow("not granted, address without end")
			<< QJsonObject{{u"enabled"_s, true}, {u"consent_url"_s, QString(40'000, u'w')}} << false
			<< step.arg(QString());
		QTest::newRow("not granted, no address")
			<< QJsonObject{{u"enabled"_s, true}, {u"granted"_s, false}} << false << step.arg(QString());
		QTest::newRow("error before all")
			<< QJsonObject{{u"enabled"_s, true}, {u"granted"_s, true}, {u"error"_s, u"<no> & \"x\""_s}}
			<< true << u"&lt;no&gt; &amp; &quot;x&quot;"_s;
		QTest::newRow("wrong types")
			<< QJsonObject{{u"enabled"_s, u"true"_s}, {u"granted"_s, 1}, {u"error"_s, QJsonObject()}}
			<< false << u"Off."_s;
		QTest::newRow("a count of another type or size")
			<< QJsonObject{{u"enabled"_s, true}, {u"granted"_s, true}, {u"stream_count"_s, 1e300}} << true
			<< on.arg(QString(), u"0"_s);
	}
	void describesTheState()
	{
		QFETCH(QJsonObject, chat);
		QFETCH(bool, granted);
		QFETCH(QString, text);
		QCOMPARE(chatGranted(chat), granted);
		QCOMPARE(chatStateText(chat), text);
	}

	void writesTheSettingsAsCompactJson()
	{
		QCOMPARE(chatSettingsJson(true, u"!rune"_s, 30, 10),
			 u"{\"command\":\"!rune\",\"cooldown_s\":30,\"enabled\":true,\"per_stream_cap\":10}"_s);
		QCOMPARE(chatSettingsJson(false, u" \t!clip \n"_s, 3600, 0),
			 u"{\"command\":\"!clip\",\"cooldown_s\":3600,\"enabled\":false,\"per_stream_cap\":0}"_s);
		QCOMPARE(chatSettingsJson(false, u"  "_s, 10, 100),
			 u"{\"command\":\"\",\"cooldown_s\":10,\"enabled\":false,\"per_stream_cap\":100}"_s);
		QCOMPARE(chatSettingsJson(false, u"a\"b ü"_s, 10, 1),
			 u"{\"command\":\"a\\\"b ü\",\"cooldown_s\":10,\"enabled\":false,\"per_stream_cap\":1}"_s);
	}
};

KESTRUNE_TEST(ChatTextsTest)
#include "chat_texts.moc"
