#include <QJsonDocument>

#include "helper/event_stream.hpp"
#include "input.hpp"

#include <vector>

// An input is one line of lengths, a byte each, then a helper's output. The output comes in pieces of those lengths in
// turn.

namespace {
using Events = std::vector<QJsonObject>;

void takeEvents(EventStream &stream, Events &events)
{
	while (const std::optional<QJsonObject> event = stream.next()) {
		events.push_back(*event);
	}
}

Events eventsOfPieces(const QByteArray &output, const QByteArray &lengths)
{
	EventStream stream;
	Events events;
	qsizetype begin = 0;
	for (qsizetype piece = 0; begin < output.size(); ++piece) {
		const auto length = static_cast<uint8_t>(lengths.isEmpty() ? 0 : lengths[piece % lengths.size()]);
		// A read may bring nothing, but not for ever.
		const qsizetype size = piece < lengths.size() ? length : length + 1;
		stream.append(output.sliced(begin, qMin(size, output.size() - begin)));
		takeEvents(stream, events);
		begin += size;
	}
	return events;
}

Events eventsOfWhole(const QByteArray &output)
{
	EventStream stream;
	Events events;
	stream.append(output);
	takeEvents(stream, events);
	return events;
}

/// The framing in its plainest form.
Events eventsOfLines(const QByteArray &output)
{
	Events events;
	QByteArrayList lines = output.split('\n');
	lines.removeLast(); // not ended by a newline
	for (const QByteArray &line : lines) {
		const QJsonDocument document = QJsonDocument::fromJson(line.trimmed());
		if (document.isObject()) {
			events.push_back(document.object());
		}
	}
	return events;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
	QByteArray output = toBytes(data, size);
	const QByteArray lengths = takeLine(output);

	const Events expected = eventsOfLines(output);
	require(eventsOfWhole(output) == expected, "output in one piece gives the events of its lines");
	require(eventsOfPieces(output, lengths) == expected, "output in pieces gives the same events as in one");
	return 0;
}
