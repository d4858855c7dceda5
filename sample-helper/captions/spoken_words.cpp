#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include "captions/spoken_words.hpp"

using namespace Qt::StringLiterals;

namespace {
struct Span {
	qint64 start_ms{0};
	qint64 end_ms{0};
};

Span spanOf(const QJsonObject &object)
{
	const QJsonObject offsets = object[u"offsets"].toObject();
	return {offsets[u"from"].toInteger(), offsets[u"to"].toInteger()};
}

bool isNoise(const QString &text)
{
	static const QRegularExpression noise(uR"(^(\[[^\]]*\]|\([^)]*\)|\*[^*]*\*|[♪♫\s]+)$)"_s);
	return text.isEmpty() || noise.match(text).hasMatch();
}

/// When each word of a segment is heard: a word begins with each token that begins with a blank.
QList<Span> spansOf(const QJsonArray &tokens)
{
	QList<Span> spans{};
	for (const QJsonValue value : tokens) {
		const QJsonObject token = value.toObject();
		const QString text = token[u"text"].toString();
		if (text.startsWith(u"[_")) {
			continue; // Not spoken: "[_BEG_]", "[_TT_50]".
		}
		const Span span = spanOf(token);
		if (spans.isEmpty() || text.startsWith(u' ')) {
			spans += span;
		} else {
			spans.last().end_ms = span.end_ms;
		}
	}
	return spans;
}

/// As many spans of equal speed as there are words.
QList<Span> evenSpans(const Span &whole, const QStringList &texts)
{
	qsizetype letters = 0;
	for (const QString &text : texts) {
		letters += text.size();
	}
	const double pace_ms = static_cast<double>(whole.end_ms - whole.start_ms) / static_cast<double>(letters);
	QList<Span> spans{};
	qsizetype done = 0;
	for (const QString &text : texts) {
		const qint64 start_ms = whole.start_ms + qRound64(static_cast<double>(done) * pace_ms);
		done += text.size();
		spans += Span{start_ms, whole.start_ms + qRound64(static_cast<double>(done) * pace_ms)};
	}
	return spans;
}

QList<Word> wordsOf(const QJsonObject &segment)
{
	const QString text = segment[u"text"].toString().simplified();
	if (isNoise(text)) {
		return {};
	}
	const QStringList texts = text.split(u' ');
	QList<Span> spans = spansOf(segment[u"tokens"].toArray());
	// A token may hold half a letter, so texts come from the segment and only times from the tokens.
	if (spans.size() != texts.size()) {
		spans = evenSpans(spanOf(segment), texts);
	}
	QList<Word> words{};
	for (qsizetype i = 0; i < texts.size(); ++i) {
		words += Word{spans[i].start_ms, spans[i].end_ms, texts[i]};
	}
	return words;
}
} // namespace

std::optional<QList<Word>> spokenWords(const QByteArray &answer)
{
	// Invalid UTF-8 (see above) would make the whole document unreadable.
	const QJsonObject root = QJsonDocument::fromJson(QString::fromUtf8(answer).toUtf8()).object();
	const QJsonValue segments = root[u"transcription"];
	if (!segments.isArray()) {
		return std::nullopt;
	}
	QList<Word> words{};
	for (const QJsonValue segment : segments.toArray()) {
		words += wordsOf(segment.toObject());
	}
	return words;
}
