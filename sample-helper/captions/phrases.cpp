#include <QStringList>

#include "captions/caption_text.hpp"
#include "captions/phrases.hpp"

#include <algorithm>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace phrases {
namespace {
using Words = QList<Word>;

constexpr int maxWidth = maxLines * captiontext::lineWidth;

bool endsWithOneOf(const QString &text, QStringView letters)
{
	// A quotation mark or a bracket may follow.
	qsizetype last = text.size() - 1;
	while (last > 0 && QStringView(u"\"'”’»)」』").contains(text[last])) {
		--last;
	}
	return last >= 0 && letters.contains(text[last]);
}

bool endsSentence(const Word &word)
{
	return endsWithOneOf(word.text, u".?!…。？！");
}

bool endsClause(const Word &word)
{
	return endsWithOneOf(word.text, u",;:–—、，；：");
}

QString joined(const Words &words)
{
	QStringList texts{};
	for (const Word &word : words) {
		texts += word.text;
	}
	return texts.join(u' ');
}

/// Where to divide words in two: behind what ends a clause or at a pause if there is one, else so that both halves are
/// about equal.
qsizetype bestCut(const Words &words)
{
	const int whole = captiontext::widthOf(joined(words));
	qsizetype best = 1;
	double bestPenalty = 0;
	int left = -1;
	for (qsizetype cut = 1; cut < words.size(); ++cut) {
		left += captiontext::widthOf(words[cut - 1].text) + 1;
		double penalty = std::abs(left - (whole - left - 1));
		if (endsClause(words[cut - 1]) || endsSentence(words[cut - 1])) {
			penalty -= captiontext::lineWidth;
		}
		constexpr double lettersPerMillisecond = lettersPerSecond / 1000.0;
		penalty -= static_cast<double>(words[cut].start_ms - words[cut - 1].end_ms) * lettersPerMillisecond;
		if (cut == 1 || penalty < bestPenalty) {
			best = cut;
			bestPenalty = penalty;
		}
	}
	return best;
}

/// The words in at most two lines; empty when they need more.
QString linesOf(const Words &words)
{
	const QString text = joined(words);
	const int width = captiontext::widthOf(text);
	// A line break takes the place of a blank.
	if (width > maxWidth + 1) {
		return {};
	}
	if (width <= captiontext::lineWidth || words.size() == 1) {
		return width <= maxWidth ? text : QString();
	}
	QString best{};
	int bestDifference = maxWidth + 1;
	for (qsizetype cut = 1; cut < words.size(); ++cut) {
		const QString upper = joined(words.first(cut));
		const QString lower = joined(words.sliced(cut));
		const int difference = std::abs(captiontext::widthOf(upper) - captiontext::widthOf(lower));
		const bool fits =
			std::max(captiontext::widthOf(upper), captiontext::widthOf(lower)) <= captiontext::lineWidth;
		if (fits && difference < bestDifference) {
			best = upper + u'\n' + lower;
			bestDifference = difference;
		}
	}
	return best;
}

bool fit(const Words &words)
{
	return words.last().end_ms - words.first().start_ms <= longest_ms && !linesOf(words).isEmpty();
}

/// A word that fills more than a caption (a sentence without blanks) in pieces, with times in proportion.
Words piecesOf(const Word &word)
{
	const int width = captiontext::widthOf(word.text);
	if (width <= maxWidth) {
		return {word};
	}
	const double pace_ms = static_cast<double>(word.end_ms - word.start_ms) / width;
	Words pieces{};
	int done = 0;
	for (const QString &text : captiontext::piecesOf(word.text, maxWidth)) {
		const qint64 start_ms = word.start_ms + qRound64(done * pace_ms);
		done += captiontext::widthOf(text);
		pieces += Word{start_ms, word.start_ms + qRound64(done * pace_ms), text};
	}
	return pieces;
}

/// The words with times that never run backwards: recognisers guess them.
Words inOrder(const Words &words, qint64 length_ms)
{
	Words result{};
	qint64 now_ms = 0;
	for (const Word &word : words) {
		const qint64 start_ms = std::max(word.start_ms, now_ms);
		const qint64 end_ms = std::clamp(word.end_ms, start_ms, std::max(start_ms, length_ms));
		if (start_ms < length_ms && !word.text.isEmpty()) {
			result += piecesOf({start_ms, end_ms, word.text});
		}
		now_ms = end_ms;
	}
	return result;
}

void divide(const Words &words, QList<Words> &phrases)
{
	if (words.size() == 1 || fit(words)) {
		phrases += words;
		return;
	}
	const qsizetype cut = bestCut(words);
	divide(words.first(cut), phrases);
	divide(words.sliced(cut), phrases);
}

/// Sentences, and what pauses separate, each in phrases that fit.
QList<Words> divided(const Words &words)
{
	QList<Words> phrases{};
	qsizetype first = 0;
	for (qsizetype i = 0; i < words.size(); ++i) {
		const bool isLast = i + 1 == words.size();
		if (isLast || endsSentence(words[i]) || words[i + 1].start_ms - words[i].end_ms > silence_ms) {
			divide(words.sliced(first, i + 1 - first), phrases);
			first = i + 1;
		}
	}
	return phrases;
}

/// Phrases that would be gone too soon ("Yes. No. Well") go together with the next one where both fit.
QList<Words> withoutFlicker(const QList<Words> &phrases)
{
	QList<Words> result{};
	for (const Words &phrase : phrases) {
		const bool isTooSoon = !result.isEmpty() &&
				       phrase.first().start_ms - result.last().first().start_ms < shortest_ms + gap_ms;
		if (isTooSoon && fit(result.last() + phrase)) {
			result.last() += phrase;
		} else {
			result += phrase;
		}
	}
	return result;
}

/// How long a text is to be shown at least, when it is said within `spoken_ms`.
qint64 neededTime_ms(const QString &text, qint64 spoken_ms)
{
	const qint64 reading_ms = captiontext::widthOf(text) * 1000LL / lettersPerSecond;
	return std::min(std::max({shortest_ms, reading_ms, spoken_ms}), longest_ms);
}
} // namespace

QList<Cue> phrasesOf(const QList<Word> &words, qint64 length_ms)
{
	const QList<Words> phrases = withoutFlicker(divided(inOrder(words, length_ms)));
	QList<Cue> cues{};
	qint64 free_ms = 0;
	for (qsizetype i = 0; i < phrases.size(); ++i) {
		const Words &phrase = phrases[i];
		const qint64 start_ms = std::max(phrase.first().start_ms, free_ms);
		const bool isLast = i + 1 == phrases.size();
		const qint64 next_ms = isLast ? length_ms + gap_ms : phrases[i + 1].first().start_ms;
		const QString text = linesOf(phrase);
		qint64 end_ms = start_ms + neededTime_ms(text, phrase.last().end_ms - start_ms);
		if (next_ms - end_ms < silence_ms && !isLast) {
			end_ms = std::min(next_ms - gap_ms, start_ms + longest_ms);
		}
		// One that is said in no time at all makes the next ones a bit late.
		end_ms = std::min(std::max(end_ms, start_ms + shortest_ms), length_ms);
		if (start_ms < end_ms) {
			cues += Cue{start_ms, end_ms, text};
		}
		free_ms = end_ms + gap_ms;
	}
	return cues;
}
} // namespace phrases
