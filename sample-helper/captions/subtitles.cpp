#include <QRegularExpression>
#include <QStringDecoder>
#include <QStringList>

#include "captions/subtitles.hpp"

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {
QString decode(const QByteArray &file)
{
	QStringDecoder decoder(QStringConverter::encodingForData(file).value_or(QStringConverter::Utf8));
	QString text = decoder.decode(file);
	if (decoder.hasError()) {
		text = QString::fromLatin1(file);
	}
	return text;
}

QStringList linesOf(QString text)
{
	text.replace(u"\r\n"_s, u"\n"_s);
	text.replace(u'\r', u'\n');
	return text.split(u'\n');
}

/// The time that four groups of a match hold (hours, which may be missing, minutes, seconds, fraction).
std::optional<qint64> timeOf(const QRegularExpressionMatch &match, int firstGroup)
{
	const int hours = match.captured(firstGroup).toInt();
	const int minutes = match.captured(firstGroup + 1).toInt();
	const int seconds = match.captured(firstGroup + 2).toInt();
	const int milliseconds = match.captured(firstGroup + 3).leftJustified(3, u'0').toInt();
	if (minutes > 59 || seconds > 59) {
		return std::nullopt;
	}
	return ((hours * 60LL + minutes) * 60 + seconds) * 1000 + milliseconds;
}

/// A line such as "00:01:02,500 --> 00:01:04,000", WebVTT's settings behind it included.
QRegularExpressionMatch timing(const QString &line)
{
	static const QRegularExpression pattern(
		uR"(^\s*(?:([0-9]{1,3}):)?([0-9]{1,2}):([0-9]{1,2})[.,]([0-9]{1,3})\s*-->)"
		R"(\s*(?:([0-9]{1,3}):)?([0-9]{1,2}):([0-9]{1,2})[.,]([0-9]{1,3})(?:\s|$))"_s);
	return pattern.match(line);
}

bool isNumber(const QString &line)
{
	static const QRegularExpression pattern(uR"(^\s*[0-9]+\s*$)"_s);
	return pattern.match(line).hasMatch();
}

QString withoutMarkup(QString line)
{
	// <i>, <font color="red">, <v Ana>, <00:00:01.500> and {\an8}; "a < b" and "<3" stay.
	static const QRegularExpression markup(uR"(</?[A-Za-z][^<>]*>|<[0-9][0-9:.]*>|\{\\[^{}]*\})"_s);
	line.remove(markup);
	static constexpr std::pair<const char *, const char16_t *> entities[]{
		{"&lt;", u"<"}, {"&gt;", u">"}, {"&nbsp;", u" "}, {"&lrm;", u""}, {"&rlm;", u""}, {"&amp;", u"&"}};
	for (const auto &[name, character] : entities) {
		line.replace(QLatin1String(name), QString::fromUtf16(character));
	}
	for (QChar &character : line) {
		if (character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
		    character == QChar::ParagraphSeparator) {
			character = u' ';
		}
	}
	return line.simplified();
}

/// The text from `line` on, up to an empty line or the next cue.
QString textFrom(const QStringList &lines, qsizetype line)
{
	QStringList text{};
	for (; line < lines.size() && !lines[line].trimmed().isEmpty(); ++line) {
		const bool nextCueFollows = line + 1 < lines.size() && timing(lines[line + 1]).hasMatch();
		if (timing(lines[line]).hasMatch() || (isNumber(lines[line]) && nextCueFollows)) {
			break;
		}
		const QString plain = withoutMarkup(lines[line]);
		if (!plain.isEmpty()) {
			text += plain;
		}
	}
	return text.join(u'\n');
}
} // namespace

bool isText(const QByteArray &file)
{
	return !decode(file).contains(QChar::Null);
}

QList<Cue> parseSubtitles(const QByteArray &file)
{
	const QStringList lines = linesOf(decode(file));
	QList<Cue> cues{};
	for (qsizetype line = 0; line < lines.size(); ++line) {
		const QRegularExpressionMatch match = timing(lines[line]);
		if (!match.hasMatch()) {
			continue;
		}
		const std::optional<qint64> start = timeOf(match, 1);
		const std::optional<qint64> end = timeOf(match, 5);
		const QString text = textFrom(lines, line + 1);
		if (start && end && *start < *end && !text.isEmpty()) {
			cues += Cue{*start, *end, text};
		}
	}
	std::stable_sort(cues.begin(), cues.end(),
			 [](const Cue &left, const Cue &right) { return left.start_ms < right.start_ms; });
	return cues;
}

QList<Cue> cuesWithin(const QList<Cue> &cues, qint64 start_ms, qint64 end_ms)
{
	QList<Cue> result{};
	for (const Cue &cue : cues) {
		if (cue.end_ms <= start_ms || cue.start_ms >= end_ms) {
			continue;
		}
		const Cue shifted{std::max(cue.start_ms - start_ms, qint64{0}), std::min(cue.end_ms, end_ms) - start_ms,
				  cue.text};
		if (!result.isEmpty() && result.last().start_ms == shifted.start_ms) {
			result.last().text += u'\n' + shifted.text;
			result.last().end_ms = std::max(result.last().end_ms, shifted.end_ms);
			continue;
		}
		if (!result.isEmpty()) {
			result.last().end_ms = std::min(result.last().end_ms, shifted.start_ms);
		}
		result += shifted;
	}
	return result;
}
