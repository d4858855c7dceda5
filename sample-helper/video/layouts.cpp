#include <QList>

#include "support/environment.hpp"
#include "video/layouts.hpp"

#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace {
constexpr Region wholePicture{0, 0, 1, 1};
constexpr Region leftHalf{0, 0, 0.5, 1};
constexpr Region rightHalf{0.5, 0, 0.5, 1};
// Webcams are as wide as the stream itself; a drawn or modelled figure stands taller.
constexpr Region cornerWebcam{0.7, 0.7, 0.3, 0.3};
constexpr Region cornerFigure{0.7, 0.55, 0.3, 0.45};

/// The largest part of the region that has the shape of the target, scaled to the target. `x` says where it begins.
QString cutAt(const Region &region, const QString &x, int width_px, int height_px)
{
	return u"crop=w='min(iw*%1,ih*%2*%4/%5)':h='min(ih*%2,iw*%1*%5/%4)'"
	       ":x='%6':y='ih*%3+(ih*%2-oh)/2',scale=%4:%5:flags=bilinear,setsar=1"_s.arg(region.width)
		       .arg(region.height)
		       .arg(region.y)
		       .arg(width_px)
		       .arg(height_px)
		       .arg(x);
}

/// The part around the middle of the region.
QString cut(const Region &region, int width_px, int height_px)
{
	return cutAt(region, u"iw*%1+(iw*%2-ow)/2"_s.arg(region.x).arg(region.width), width_px, height_px);
}

/// The game: the part around the middle of the picture, moved aside where the camera, which is shown by itself, would
/// be seen a second time.
QString cutGame(const Region &camera, int width_px, int height_px)
{
	const double left = camera.x;
	const double right = camera.x + camera.width;
	const QString aside = left + right > 1 ? u"if(gte(iw*%1,ow),min((iw-ow)/2,iw*%1-ow),(iw-ow)/2)"_s.arg(left)
					       : u"if(gte(iw*(1-%1),ow),max((iw-ow)/2,iw*%1),(iw-ow)/2)"_s.arg(right);
	return cutAt(wholePicture, aside, width_px, height_px);
}

/// Two pictures, cut out by these filters, one above the other.
QString stacked(const QString &upper, const QString &lower)
{
	return u"[source]split=2[first][second];[first]%1[upper];[second]%2[lower];"
	       "[upper][lower]vstack=inputs=2"_s.arg(upper, lower);
}

QString cameraAbove(const Region &camera, int cameraHeight_px)
{
	return stacked(cut(camera, shortWidth_px, cameraHeight_px),
		       cutGame(camera, shortWidth_px, shortHeight_px - cameraHeight_px));
}

/// One frame in the shape of a disc: opaque inside, transparent outside. A single frame is enough, since the filters
/// that take it repeat it; drawing it again for each frame would cost more than the encoding.
QString discMask(int size_px)
{
	return u"color=c=black:s=%1x%1:r=1,trim=end_frame=1,format=gray,"
	       "geq=lum='255*clip(%2-hypot(X-%2,Y-%2),0,1)'"_s.arg(size_px)
		       .arg(size_px / 2);
}

QString gameplay(const Region &)
{
	return u"[source]%1"_s.arg(cut(wholePicture, shortWidth_px, shortHeight_px));
}

QString podcast(const Region &)
{
	return stacked(cut(leftHalf, shortWidth_px, shortHeight_px / 2),
		       cut(rightHalf, shortWidth_px, shortHeight_px / 2));
}

QString facePanel(const Region &camera)
{
	return cameraAbove(camera, 840);
}

QString facecam(const Region &camera)
{
	// As high as a webcam's whole picture needs.
	return cameraAbove(camera, 608);
}

QString bubble(const Region &camera)
{
	constexpr int gameTop_px = 160;
	constexpr int gameHeight_px = 1080;
	constexpr int discSize_px = 440;
	constexpr int ringSize_px = discSize_px + 20;
	constexpr int discTop_px = gameTop_px + gameHeight_px - discSize_px / 2;
	// The background is blurred small and then enlarged: it looks the same and takes a fraction of the time.
	const QString background = cut(wholePicture, shortWidth_px / 8, shortHeight_px / 8) +
				   u",boxblur=5:2,scale=%1:%2:flags=bilinear"_s.arg(shortWidth_px).arg(shortHeight_px);
	return u"[source]split=3[back][middle][face];"
	       "[back]%1[blurred];[middle]%2[game];[face]%3[panel];"
	       "%4[discmask];[panel][discmask]alphamerge[disc];"
	       "color=c=white:s=%6x%6:r=1,trim=end_frame=1,format=yuv420p[white];"
	       "%5[ringmask];[white][ringmask]alphamerge[ring];"
	       "[blurred][game]overlay=x=0:y=%11[lower];[lower][ring]overlay=x=%7:y=%8[ringed];"
	       "[ringed][disc]overlay=x=%9:y=%10"_s
		       .arg(background, cutGame(camera, shortWidth_px, gameHeight_px),
			    cut(camera, discSize_px, discSize_px), discMask(discSize_px), discMask(ringSize_px))
		       .arg(ringSize_px)
		       .arg((shortWidth_px - ringSize_px) / 2)
		       .arg(discTop_px - (ringSize_px - discSize_px) / 2)
		       .arg((shortWidth_px - discSize_px) / 2)
		       .arg(discTop_px)
		       .arg(gameTop_px);
}

struct Layout {
	const char *key{};
	QString (*graph)(const Region &camera){};
	bool showsCamera{false};
	Region camera{};
	double captionHeight{0};
};

constexpr std::array<Layout, 5> layouts{{{"vtuber-bubble", bubble, true, cornerFigure, 0.87},
					 {"vtuber", facePanel, true, cornerFigure, 0.80},
					 {"facecam", facecam, true, cornerWebcam, 0.80},
					 {"podcast", podcast, false, cornerFigure, 0.50},
					 {"gameplay", gameplay, false, cornerFigure, 0.75}}};

const Layout &layoutOf(const QString &key)
{
	for (const Layout &layout : layouts) {
		if (key == QLatin1String(layout.key)) {
			return layout;
		}
	}
	return layouts.front();
}

/// "x,y,width,height"; nothing if that is no part of a picture.
std::optional<Region> parseRegion(const QString &text)
{
	QList<double> numbers{};
	for (const QString &part : text.split(u',')) {
		bool isNumber = false;
		const double number = part.trimmed().toDouble(&isNumber);
		if (!isNumber || number < 0 || number > 1) {
			return std::nullopt;
		}
		numbers += number;
	}
	if (numbers.size() != 4) {
		return std::nullopt;
	}
	const Region region{numbers[0], numbers[1], numbers[2], numbers[3]};
	const bool isInside = region.x + region.width <= 1.0001 && region.y + region.height <= 1.0001;
	return region.width >= 0.01 && region.height >= 0.01 && isInside ? std::optional(region) : std::nullopt;
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

Region cameraRegion(const QString &layout, QStringList &notes)
{
	const Layout &row = layoutOf(layout);
	const QString setting = environment::camera();
	if (setting.isEmpty()) {
		return row.camera;
	}
	const std::optional<Region> region = parseRegion(setting);
	if (!region && row.showsCamera) {
		notes += u"KESTRUNE_SAMPLE_HELPER_CAMERA isn't left,top,width,height from 0 to 1, used the lower right "
			 "corner"_s;
	}
	return region.value_or(row.camera);
}

QString layoutGraph(const QString &key, const Region &camera)
{
	return layoutOf(key).graph(camera);
}

double layoutCaptionHeight(const QString &key)
{
	return layoutOf(key).captionHeight;
}
