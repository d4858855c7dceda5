#include "captions/caption_text.hpp"
#include "captions/captions.hpp"
#include "video/layouts.hpp"
#include "video/look.hpp"

#include <array>

using namespace Qt::StringLiterals;

namespace {
/// How letters are painted, in the words of the script format: colours are &H, alpha (00 is opaque), blue, green, red.
struct Layer {
	const char *letters{};
	const char *outline{};
	const char *shadow{};
	/// 1 outlines the letters, 4 puts a box of the shadow's colour and size behind them.
	int border{1};
	int outlineWidth_px{0};
	int shadowDepth_px{0};
	/// Commands in front of each text.
	const char *commands{""};
};

struct Style {
	const char *key{};
	int fontSize_px{0};
	bool upperCase{false};
	/// How many of the layers are drawn, the lowest first.
	std::size_t layerCount{0};
	std::array<Layer, 2> layers{};
};

struct Font {
	const char *key{};
	const char *family{};
	/// Families of a single weight are heavy as they are.
	bool bold{false};
	/// For letters that fill less of their line than others.
	double scale{1};
};

constexpr Layer glow{"&H80D62BFF", "&H60D62BFF", "&HFF000000", 1, 16, 0, R"({\blur10})"};

constexpr std::array<Style, 5> styles{{
	{"rune", 96, false, 1, {{{"&H006AFFB8", "&H000B2014", "&H66000000", 1, 8, 8, R"({\xshad0\yshad8})"}}}},
	{"neon", 96, false, 2, {{glow, {"&H00FFFFFF", "&H00D62BFF", "&HFF000000", 1, 5, 0}}}},
	{"clean", 84, false, 1, {{{"&H00FFFFFF", "&HFF000000", "&H59000000", 4, 0, 28}}}},
	{"meme", 100, true, 1, {{{"&H00FFFFFF", "&H00000000", "&HFF000000", 1, 10, 0}}}},
	{"none", 0, false, 0, {}},
}};

constexpr std::array<Font, 4> fonts{{{"bebas", "Bebas Neue", false},
				     {"montserrat", "Montserrat", true},
				     {"inter", "Inter", true},
				     {"bangers", "Bangers", false, 1.4}}};

/// The row with the key; the first one for a key that is in no row.
template<typename Row, std::size_t Size> const Row &rowOf(const std::array<Row, Size> &rows, const QString &key)
{
	for (const Row &row : rows) {
		if (key == QLatin1String(row.key)) {
			return row;
		}
	}
	return rows.front();
}

template<typename Row, std::size_t Size> QStringList keysOf(const std::array<Row, Size> &rows)
{
	QStringList keys{};
	for (const Row &row : rows) {
		keys += QLatin1String(row.key);
	}
	return keys;
}

/// The middle of the caption in fractions of the height of the Short.
double heightOf(const Look &look)
{
	if (look.position == u"top") {
		return 0.12;
	}
	if (look.position == u"middle") {
		return 0.5;
	}
	if (look.position == u"bottom") {
		return 0.86;
	}
	return layoutCaptionHeight(look.layout);
}

QString styleLine(const Style &style, std::size_t layer, const Font &font)
{
	const Layer &paint = style.layers[layer];
	// A font family that is not installed is replaced by the nearest one that is. The 5 is "centred on its place".
	return u"Style: Layer%1,%2,%3,%4,%4,%5,%6,%7,0,0,0,100,100,0,0,%8,%9,%10,5,60,60,0,1\n"_s.arg(layer)
		.arg(QLatin1String(font.family))
		.arg(qRound(style.fontSize_px * font.scale))
		.arg(QLatin1String(paint.letters), QLatin1String(paint.outline), QLatin1String(paint.shadow))
		.arg(font.bold ? -1 : 0)
		.arg(paint.border)
		.arg(paint.outlineWidth_px)
		.arg(paint.shadowDepth_px);
}

QString cueLines(const Style &style, const Font &font, const Cue &cue, int y)
{
	const QString text = captiontext::breakLines(style.upperCase ? cue.text.toUpper() : cue.text);
	const int fontSize_px = static_cast<int>(style.fontSize_px * font.scale * captiontext::fontScale(text));
	QString lines{};
	for (std::size_t layer = 0; layer < style.layerCount; ++layer) {
		lines += u"Dialogue: %1,%2,%3,Layer%1,,0,0,0,,{\\pos(%4,%5)\\fs%6}%7"_s.arg(layer)
				 .arg(captiontext::formatTime(cue.start_ms), captiontext::formatTime(cue.end_ms))
				 .arg(shortWidth_px / 2)
				 .arg(y)
				 .arg(fontSize_px)
				 .arg(QLatin1String(style.layers[layer].commands));
		// Appended, since the text itself may hold something like %1.
		lines += captiontext::escape(text) + u'\n';
	}
	return lines;
}
} // namespace

QStringList styleKeys()
{
	return keysOf(styles);
}

QStringList fontKeys()
{
	return keysOf(fonts);
}

QString fontFamily(const QString &key)
{
	return QLatin1String(rowOf(fonts, key).family);
}

QStringList positionKeys()
{
	return {u"auto"_s, u"top"_s, u"middle"_s, u"bottom"_s};
}

bool hasCaptions(const Look &look)
{
	return rowOf(styles, look.style).layerCount > 0;
}

int captionMiddle_px(const Look &look)
{
	return qRound(heightOf(look) * shortHeight_px);
}

QByteArray captionScript(const Look &look, const QList<Cue> &cues)
{
	const Style &style = rowOf(styles, look.style);
	const Font &font = rowOf(fonts, look.font);
	QString styleLines{};
	for (std::size_t layer = 0; layer < style.layerCount; ++layer) {
		styleLines += styleLine(style, layer, font);
	}
	QString events{};
	for (const Cue &cue : cues) {
		events += cueLines(style, font, cue, captionMiddle_px(look));
	}
	return captiontext::makeScript(shortWidth_px, shortHeight_px, styleLines, events);
}
