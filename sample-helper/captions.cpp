#include "captions.hpp"

#include "layouts.hpp"
#include "look.hpp"

#include <array>

namespace {

struct Style {
	const char *key{};
	int fontSize{};
	bool upperCase{};
	/// Options of up to two drawtext layers, the lower one first; an empty one draws nothing.
	std::array<const char *, 2> layers{};
};

struct Font {
	const char *key{};
	const char *family{};
};

constexpr std::array<Style, 5> styles{{
	{"rune",
	 84,
	 false,
	 {"fontcolor=0xb8ff6a:borderw=8:bordercolor=0x14200b:shadowx=0:shadowy=8:shadowcolor=black@0.6", ""}},
	{"neon",
	 84,
	 false,
	 {"fontcolor=0xff2bd6@0.5:borderw=18:bordercolor=0xff2bd6@0.35",
	  "fontcolor=white:borderw=5:bordercolor=0xff2bd6"}},
	{"clean", 72, false, {"fontcolor=white:box=1:boxcolor=black@0.65:boxborderw=28", ""}},
	{"meme", 88, true, {"fontcolor=white:borderw=11:bordercolor=black", ""}},
	{"none", 0, false, {"", ""}},
}};

constexpr std::array<Font, 4> fonts{
	{{"bebas", "Bebas Neue"}, {"montserrat", "Montserrat"}, {"inter", "Inter"}, {"bangers", "Bangers"}}};

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
	if (look.position == QLatin1String("top")) {
		return 0.12;
	}
	if (look.position == QLatin1String("middle")) {
		return 0.5;
	}
	if (look.position == QLatin1String("bottom")) {
		return 0.86;
	}
	return layoutCaptionHeight(look.layout);
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

QStringList positionKeys()
{
	return {QStringLiteral("auto"), QStringLiteral("top"), QStringLiteral("middle"), QStringLiteral("bottom")};
}

QString captionFileName()
{
	return QStringLiteral("caption.txt");
}

QString captionText(const Look &look, const QString &text)
{
	return rowOf(styles, look.style).upperCase ? text.toUpper() : text;
}

QString captionFilter(const Look &look)
{
	const Style &style = rowOf(styles, look.style);
	QStringList filters{};
	for (const char *layer : style.layers) {
		const QString options = QLatin1String(layer);
		if (!options.isEmpty()) {
			// A font family that is not installed is replaced by fontconfig with the nearest one that is.
			filters += QStringLiteral("drawtext=textfile=%1:expansion=none:font='%2':fontsize=%3:%4"
						  ":x=(w-text_w)/2:y=h*%5-text_h/2")
					   .arg(captionFileName(), QLatin1String(rowOf(fonts, look.font).family))
					   .arg(style.fontSize)
					   .arg(options)
					   .arg(heightOf(look));
		}
	}
	return filters.join(QLatin1Char(','));
}
