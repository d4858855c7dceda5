#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

#include "clip/clip_texts.hpp"
#include "host/test_program.hpp"

using namespace Qt::StringLiterals;

class ClipTextsTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void shortReadyText_data()
	{
		QTest::addColumn<QJsonObject>("done");
		QTest::addColumn<QString>("text");
		const auto row = [](const char *name, const QJsonObject &done, const QString &text) {
			QTest::newRow(name) << done << text;
		};
		row("nothing", {}, u"Your Short is ready."_s);
		row("empty list", {{u"formatted"_s, QJsonArray()}}, u"Your Short is ready."_s);
		row("not a list", {{u"formatted"_s, u"a.mp4"_s}}, u"Your Short is ready."_s);
		row("a path", {{u"formatted"_s, QJsonArray{u"/s/x/a.mp4"_s}}}, u"Your Short is ready: a.mp4"_s);
		row("the first of two", {{u"formatted"_s, QJsonArray{u"/a.mp4"_s, u"/b.mp4"_s}}},
		    u"Your Short is ready: a.mp4"_s);
		row("not a string", {{u"formatted"_s, QJsonArray{1}}}, u"Your Short is ready: "_s);
		row("a note", {{u"formatted"_s, QJsonArray{u"a.mp4"_s}}, {u"note"_s, u"uploading"_s}},
		    u"Your Short is ready: a.mp4 (uploading)"_s);
		row("a note alone", {{u"note"_s, u"%1"_s}}, u"Your Short is ready. (%1)"_s);
		row("an empty note", {{u"note"_s, QString()}}, u"Your Short is ready."_s);
		row("a note that is no string", {{u"note"_s, true}}, u"Your Short is ready."_s);
		row("placeholders in a name", {{u"formatted"_s, QJsonArray{u"/s/%1 %2.mp4"_s}}, {u"note"_s, u"n"_s}},
		    u"Your Short is ready: %1 %2.mp4 (n)"_s);
	}
	void shortReadyText()
	{
		QFETCH(QJsonObject, done);
		QFETCH(QString, text);
		QCOMPARE(::shortReadyText(done), text);
	}

	void savingText()
	{
		QCOMPARE(::savingText(u"Last 30 s"_s), u"Saving the last 30 s…"_s);
		QCOMPARE(::savingText(u"Last 120 s"_s), u"Saving the last 120 s…"_s);
	}
};

KESTRUNE_TEST(ClipTextsTest)
#include "clip_texts.moc"
