#include <QStringList>

#include "captions/caption_text.hpp"
#include "captions/captions.hpp"
#include "captions/subtitles.hpp"
#include "cost.hpp"
#include "input.hpp"
#include "video/look.hpp"

using namespace Qt::StringLiterals;

// An input is the text of a cue. However it looks, the script for ffmpeg's "ass" filter has the lines, the styles and
// the commands that it has for any other text, and a reader of such scripts shows the text letter by letter.

namespace {
// The invisible letter that the helper puts behind a backslash; the text may hold some of its own.
constexpr QChar joiner(0x2060);

/// A script's lines, as libass tells lines apart.
QStringList linesOf(const QByteArray &script)
{
	QString text = QString::fromUtf8(script);
	require(!text.contains(QChar::Null), "a script has no end before its end");
	text.replace(u'\r', u'\n');
	return text.split(u'\n');
}

/// What libass shows of an event's text, with a newline for each line break: a brace opens commands unless a backslash
/// is in front of it.
QString shownBy(const QString &text)
{
	QString shown;
	for (qsizetype at = 0; at < text.size(); ++at) {
		const QChar letter = text[at];
		const QChar next = at + 1 < text.size() ? text[at + 1] : QChar();
		require(letter != u'{', "no text opens commands");
		if (letter == u'\\' && next == u'N') {
			shown += u'\n';
			++at;
		} else if (letter == u'\\' && (next == u'{' || next == u'}')) {
			shown += next;
			++at;
		} else {
			require(letter != u'\\' || (next != u'n' && next != u'h'),
				"no text is a line break or a blank");
			shown += letter;
		}
	}
	return shown.remove(joiner);
}

/// A script shows control characters as blanks, if at all, and has no use for halves of letters.
QString asShown(const QString &text)
{
	QString shown = QString::fromUtf8(text.toUtf8());
	for (QChar &letter : shown) {
		if (letter != u'\n' && letter.category() == QChar::Other_Control) {
			letter = u' ';
		}
	}
	return shown.remove(joiner);
}

/// The line without the size of its letters, which depends on how long the text is.
QString withoutSize(QString line)
{
	const qsizetype begin = line.indexOf(u"\\fs") + 3;
	qsizetype end = begin;
	while (end < line.size() && line[end].isDigit()) {
		++end;
	}
	return line.remove(begin, end - begin);
}

void requireOnlyText(const Look &look, const QString &text)
{
	const QString word = u"word"_s;
	const QStringList plain = linesOf(captionScript(look, {{0, 1000, word}}));
	const QStringList lines = linesOf(captionScript(look, {{0, 1000, text}}));
	require(lines.size() == plain.size(), "a text adds no line");
	const QString expected = asShown(captiontext::breakLines(look.style == u"meme" ? text.toUpper() : text));
	for (qsizetype index = 0; index < lines.size(); ++index) {
		if (!plain[index].startsWith(u"Dialogue:")) {
			require(lines[index] == plain[index], "a text changes no line but its own");
			continue;
		}
		const QString own = withoutSize(plain[index]).chopped(word.size());
		const QString line = withoutSize(lines[index]);
		require(line.startsWith(own), "a text changes nothing in front of it");
		require(shownBy(line.sliced(own.size())) == expected, "a text is shown letter by letter");
	}
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
	const QString text = QString::fromUtf8(toBytes(data, size));
	const QStringList styles = styleKeys();
	for (const QString &style : styles) {
		const CostWatch watch({});
		requireOnlyText({u"gameplay"_s, style, u"inter"_s, u"auto"_s}, text);
	}
	const double scale = captiontext::fontScale(text);
	require(scale >= 0.5 && scale <= 1, "a text is set no smaller than half");
	return 0;
}
