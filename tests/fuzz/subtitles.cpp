#include <QList>

#include "captions/subtitles.hpp"
#include "cost.hpp"
#include "input.hpp"

// An input is a subtitle file.

namespace {
constexpr qint64 start_ms = 1000;
constexpr qint64 end_ms = 61'000;

bool isPlain(const QString &text)
{
	const bool plain = std::ranges::none_of(text, [](QChar letter) {
		return letter != u'\n' && (letter.category() == QChar::Other_Control ||
					   letter == QChar::LineSeparator || letter == QChar::ParagraphSeparator);
	});
	return plain && !text.trimmed().isEmpty();
}

void requireOrder(const QList<Cue> &cues)
{
	qint64 last_ms = 0;
	for (const Cue &cue : cues) {
		require(last_ms <= cue.start_ms && cue.start_ms < cue.end_ms,
			"cues come in order, and end after they start");
		require(isPlain(cue.text), "a cue holds text and nothing but text");
		last_ms = cue.start_ms;
	}
}

void requireOneAtATime(const QList<Cue> &cues)
{
	qint64 last_ms = 0;
	for (const Cue &cue : cues) {
		require(last_ms <= cue.start_ms && cue.start_ms < cue.end_ms, "one cue at a time is shown");
		last_ms = cue.end_ms;
	}
	require(last_ms <= end_ms - start_ms, "no cue outlasts the excerpt");
}

/// How lines end makes no difference.
void requireAnyLineEnds(const QByteArray &file, const QList<Cue> &cues)
{
	if (file.contains('\r') || file.contains('\0')) {
		return; // mixed ends, or letters of more than a byte each
	}
	require(parseSubtitles(QByteArray(file).replace("\n", "\r\n")) == cues, "lines of Windows are lines");
	require(parseSubtitles(QByteArray(file).replace('\n', '\r')) == cues, "lines of old Macs are lines");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
	const QByteArray file = toBytes(data, size);
	QList<Cue> cues;
	{
		const CostWatch watch({});
		cues = isText(file) ? parseSubtitles(file) : QList<Cue>();
		requireOneAtATime(cuesWithin(cues, start_ms, end_ms));
	}
	requireOrder(cues);
	requireAnyLineEnds(file, isText(file) ? cues : parseSubtitles(file));
	return 0;
}
