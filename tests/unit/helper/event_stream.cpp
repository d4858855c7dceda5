#include <QJsonDocument>
#include <QTest>

#include "helper/event_stream.hpp"
#include "host/test_program.hpp"

using namespace Qt::StringLiterals;

namespace {
/// The stream's events for these chunks, as compact JSON with "|" after each chunk.
QByteArray eventsOf(const QByteArrayList &pieces)
{
	EventStream stream;
	QByteArray result;
	for (const QByteArray &piece : pieces) {
		stream.append(piece);
		while (const std::optional<QJsonObject> event = stream.next()) {
			result += QJsonDocument(*event).toJson(QJsonDocument::Compact);
		}
		result += '|';
	}
	return result;
}
} // namespace

class EventStreamTest : public QObject {
	Q_OBJECT

private Q_SLOTS:
	void turnsLinesIntoEvents_data()
	{
		QTest::addColumn<QByteArrayList>("pieces");
		QTest::addColumn<QByteArray>("events");

		const auto row = [](const char *name, const QByteArrayList &pieces, const QByteArray &events) {
			QTest::newRow(name) << pieces << events;
		};
		row("nothing", {""}, "|");
		row("one", {"{\"a\":1}\n"}, "{\"a\":1}|");
		row("two in one piece", {"{\"a\":1}\n{\"b\":2}\n"}, "{\"a\":1}{\"b\":2}|");
		row("one in two pieces", {"{\"a\"", ":1}\n"}, "|{\"a\":1}|");
		row("newline in a piece of its own", {"{\"a\":1}", "\n"}, "|{\"a\":1}|");
		row("one and a half, then the rest", {"{\"a\":1}\n{\"b", "\":2}\n"}, "{\"a\":1}|{\"b\":2}|");
		row("no newline at the end", {"{\"a\":1}"}, "|");
		row("carriage returns", {"{\"a\":1}\r\n{\"b\":2}\r\n"}, "{\"a\":1}{\"b\":2}|");
		row("blanks around", {" \t{\"a\":1} \t\n"}, "{\"a\":1}|");
		row("empty lines", {"\n\r\n  \n{\"a\":1}\n\n"}, "{\"a\":1}|");
		row("plain text", {"hello\n{\"a\":1}\n"}, "{\"a\":1}|");
		row("an array", {"[{\"a\":1}]\n"}, "|");
		row("scalars", {"1\n\"a\"\ntrue\nnull\n"}, "|");
		row("two objects on one line", {"{\"a\":1}{\"b\":2}\n"}, "|");
		row("an object over two lines", {"{\"a\":\n1}\n"}, "|");
		row("cut off object", {"{\"a\":1\n{\"b\":2}\n"}, "{\"b\":2}|");
		row("empty object", {"{}\n"}, "{}|");
		row("nested", {"{\"a\":{\"b\":[1,{\"c\":2}]}}\n"}, "{\"a\":{\"b\":[1,{\"c\":2}]}}|");
		row("UTF-8 cut inside a character", {"{\"a\":\"\xc3", "\xa4\"}\n"}, "|{\"a\":\"\xc3\xa4\"}|");
		row("bytes that are not UTF-8", {"{\"a\":\"\xff\"}\n{\"b\":2}\n"}, "{\"b\":2}|");
		row("a null byte", {QByteArray("{\"a\":1}\0\n{\"b\":2}\n", 18)}, "{\"b\":2}|");
		row("a line after many pieces", {"{", "\"", "a", "\"", ":", "1", "}", "\n"}, "|||||||{\"a\":1}|");
	}
	void turnsLinesIntoEvents()
	{
		QFETCH(QByteArrayList, pieces);
		QFETCH(QByteArray, events);
		QCOMPARE(eventsOf(pieces), events);
	}

	void everyCutGivesTheSameEvents()
	{
		const QByteArray output = "{\"a\":1}\r\nnoise\n{\"b\":\"\xc3\xa4\"}\n{\"c\":3}\n{\"unfinished\"";
		const QByteArray whole = eventsOf({output}).replace('|', "");
		for (qsizetype cut = 0; cut <= output.size(); ++cut) {
			QCOMPARE(eventsOf({output.first(cut), output.sliced(cut)}).replace('|', ""), whole);
		}

		QByteArrayList bytes;
		for (const char byte : output) {
			bytes << QByteArray(1, byte);
		}
		QCOMPARE(eventsOf(bytes).replace('|', ""), whole);
	}

	void takesMoreBetweenTwoEvents()
	{
		EventStream stream;
		stream.append("{\"a\":1}\n{\"b\":2}\n{\"c\"");
		QCOMPARE(stream.next(), QJsonObject({{u"a"_s, 1}}));
		// Exceeds the buffer's capacity.
		stream.append(QByteArray(100'000, ' '));
		stream.append(":3}");
		stream.append("\n");
		QCOMPARE(stream.next(), QJsonObject({{u"b"_s, 2}}));
		QCOMPARE(stream.next(), QJsonObject({{u"c"_s, 3}}));
		QVERIFY(!stream.next());
	}

	void dropsALineThatIsTooLong_data()
	{
		QTest::addColumn<qsizetype>("piece_bytes");
		QTest::newRow("at once") << 2 * EventStream::maxLine_bytes;
		QTest::newRow("in pieces") << qsizetype{64} * 1024;
	}
	void dropsALineThatIsTooLong()
	{
		QFETCH(qsizetype, piece_bytes);
		const auto line = [](qsizetype size_bytes) {
			return "{\"a\":\"" + QByteArray(size_bytes - 8, 'x') + "\"}\n";
		};
		const QByteArray output =
			line(EventStream::maxLine_bytes) + line(EventStream::maxLine_bytes + 1) + "{\"b\":2}\n";
		QByteArrayList pieces;
		for (qsizetype start = 0; start < output.size(); start += piece_bytes) {
			pieces << output.mid(start, piece_bytes);
		}
		QCOMPARE(eventsOf(pieces).replace('|', ""), line(EventStream::maxLine_bytes).trimmed() + "{\"b\":2}");
	}

	void longOutputInSmallPiecesStaysLinear()
	{
		// Takes a second; searching the whole buffer for each chunk would not end within the time limit.
		const QByteArray piece(64, 'x');
		EventStream stream;
		stream.append("{\"a\":\"");
		for (int count = 0; count < 65536; ++count) {
			stream.append(piece);
			QVERIFY(!stream.next());
		}
		stream.append("\"}\n");
		const std::optional<QJsonObject> event = stream.next();
		QVERIFY(event);
		QCOMPARE((*event)[u"a"].toString().size(), qsizetype{4} * 1024 * 1024);
	}
};

KESTRUNE_TEST(EventStreamTest)
#include "event_stream.moc"
