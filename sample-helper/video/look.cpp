#include <QCommandLineParser>
#include <QJsonObject>

#include "captions/captions.hpp"
#include "support/state.hpp"
#include "video/layouts.hpp"
#include "video/look.hpp"

using namespace Qt::StringLiterals;

namespace {
constexpr QLatin1StringView lookFile("look.json");
constexpr QLatin1StringView layoutName("layout");
constexpr QLatin1StringView styleName("style");
constexpr QLatin1StringView fontName("font");
constexpr QLatin1StringView positionName("caption-position");

QString knownOrFirst(const QString &key, const QStringList &keys)
{
	return keys.contains(key) ? key : keys.first();
}
} // namespace

Look storedLook()
{
	const QJsonObject stored = state::read(lookFile);
	return {knownOrFirst(stored.value(layoutName).toString(), layoutKeys()),
		knownOrFirst(stored.value(styleName).toString(), styleKeys()),
		knownOrFirst(stored.value(fontName).toString(), fontKeys()),
		knownOrFirst(stored.value(positionName).toString(), positionKeys())};
}

void storeLook(const Look &look)
{
	state::update(lookFile, [&look](QJsonObject &stored) {
		stored[layoutName] = look.layout;
		stored[styleName] = look.style;
		stored[fontName] = look.font;
		stored[positionName] = look.position;
	});
}

Look requestedLook(const QCommandLineParser &parser, QStringList &notes)
{
	const auto choose = [&](const QString &option, const QStringList &keys, const QString &stored) {
		if (!parser.isSet(option)) {
			return stored;
		}
		const QString key = parser.value(option);
		if (!keys.contains(key)) {
			notes += u"unknown %1 \"%2\", used \"%3\""_s.arg(option, key, keys.first());
		}
		return knownOrFirst(key, keys);
	};
	const Look stored = storedLook();
	return {choose(layoutName, layoutKeys(), stored.layout), choose(styleName, styleKeys(), stored.style),
		choose(fontName, fontKeys(), stored.font), choose(positionName, positionKeys(), stored.position)};
}
