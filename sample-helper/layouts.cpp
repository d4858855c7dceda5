#include "layouts.hpp"

#include <QList>

#include <array>

namespace {

constexpr Region wholePicture{0, 0, 1, 1};
constexpr Region leftHalf{0, 0, 0.5, 1};
constexpr Region rightHalf{0.5, 0, 0.5, 1};
constexpr Region lowerRightCorner{0.7, 0.55, 0.3, 0.45};

/// The largest part around the middle of the region that has the shape of the target, scaled to the target.
QString cut(const Region &region, int width, int height)
{
	return QStringLiteral("crop=w='min(iw*%1,ih*%2*%5/%6)':h='min(ih*%2,iw*%1*%6/%5)'"
			      ":x='iw*%3+(iw*%1-ow)/2':y='ih*%4+(ih*%2-oh)/2',scale=%5:%6:flags=bilinear,setsar=1")
		.arg(region.width)
		.arg(region.height)
		.arg(region.x)
		.arg(region.y)
		.arg(width)
		.arg(height);
}

QString stacked(const Region &upper, int upperHeight, const Region &lower)
{
	return QStringLiteral("[source]split=2[first][second];[first]%1[upper];[second]%2[lower];"
			      "[upper][lower]vstack=inputs=2[framed]")
		.arg(cut(upper, shortWidth, upperHeight), cut(lower, shortWidth, shortHeight - upperHeight));
}

/// One frame in the shape of a disc: opaque inside, transparent outside. A single frame is enough, since the filters
/// that take it repeat it; drawing it anew for each frame would cost more than the encoding.
QString discMask(int size)
{
	return QStringLiteral("color=c=black:s=%1x%1:r=1,trim=end_frame=1,format=gray,"
			      "geq=lum='255*clip(%2-hypot(X-%2,Y-%2),0,1)'")
		.arg(size)
		.arg(size / 2);
}

QString gameplay(const Region &)
{
	return QStringLiteral("[source]%1[framed]").arg(cut(wholePicture, shortWidth, shortHeight));
}

QString podcast(const Region &)
{
	return stacked(leftHalf, shortHeight / 2, rightHalf);
}

QString facePanel(const Region &camera)
{
	return stacked(camera, 720, wholePicture);
}

QString facecam(const Region &camera)
{
	return stacked(wholePicture, 1280, camera);
}

QString bubble(const Region &camera)
{
	constexpr int discSize = 440;
	constexpr int ringSize = discSize + 20;
	constexpr int discTop = 1300;
	// The background is blurred small and then enlarged: it looks the same and takes a fraction of the time.
	const QString background =
		cut(wholePicture, shortWidth / 8, shortHeight / 8) +
		QStringLiteral(",boxblur=5:2,scale=%1:%2:flags=bilinear").arg(shortWidth).arg(shortHeight);
	return QStringLiteral("[source]split=3[back][middle][face];"
			      "[back]%1[blurred];[middle]%2[game];[face]%3[panel];"
			      "%4[discmask];[panel][discmask]alphamerge[disc];"
			      "color=c=white:s=%6x%6:r=1,trim=end_frame=1,format=yuv420p[white];"
			      "%5[ringmask];[white][ringmask]alphamerge[ring];"
			      "[blurred][game]overlay=x=0:y=300[lower];[lower][ring]overlay=x=%7:y=%8[ringed];"
			      "[ringed][disc]overlay=x=%9:y=%10[framed]")
		.arg(background, cut(wholePicture, shortWidth, 864), cut(camera, discSize, discSize),
		     discMask(discSize), discMask(ringSize))
		.arg(ringSize)
		.arg((shortWidth - ringSize) / 2)
		.arg(discTop - (ringSize - discSize) / 2)
		.arg((shortWidth - discSize) / 2)
		.arg(discTop);
}

struct Layout {
	const char *key{};
	QString (*graph)(const Region &camera){};
	double captionHeight{};
};

constexpr std::array<Layout, 5> layouts{{{"vtuber-bubble", bubble, 0.64},
					 {"vtuber", facePanel, 0.80},
					 {"facecam", facecam, 0.62},
					 {"podcast", podcast, 0.50},
					 {"gameplay", gameplay, 0.75}}};

const Layout &layoutOf(const QString &key)
{
	for (const Layout &layout : layouts) {
		if (key == QLatin1String(layout.key)) {
			return layout;
		}
	}
	return layouts.front();
}

} // namespace

QStringList layoutKeys()
{
	QStringList keys{};
	for (const Layout &layout : layouts) {
		keys += QLatin1String(layout.key);
	}
	return keys;
}

Region cameraRegion()
{
	const QStringList parts = qEnvironmentVariable("KESTRUNE_SAMPLE_HELPER_CAMERA").split(QLatin1Char(','));
	QList<double> numbers{};
	for (const QString &part : parts) {
		bool isNumber = false;
		const double number = part.trimmed().toDouble(&isNumber);
		if (isNumber && number >= 0 && number <= 1) {
			numbers += number;
		}
	}
	if (parts.size() != 4 || numbers.size() != 4) {
		return lowerRightCorner;
	}
	const Region region{numbers[0], numbers[1], numbers[2], numbers[3]};
	const bool inside = region.width >= 0.01 && region.height >= 0.01 && region.x + region.width <= 1.0001 &&
			    region.y + region.height <= 1.0001;
	return inside ? region : lowerRightCorner;
}

QString layoutGraph(const QString &key, const Region &camera)
{
	return layoutOf(key).graph(camera);
}

double layoutCaptionHeight(const QString &key)
{
	return layoutOf(key).captionHeight;
}
