#include "video/colours.hpp"
#include "video/ffmpeg.hpp"
#include "video/probe.hpp"

using namespace Qt::StringLiterals;

namespace {
/// HDR shows ordinary white at 203 nits; brighter values, up to the 1000 nits that OBS sets by default, are compressed
/// above it.
QString toneMapping()
{
	// Videos with such brightness have the primaries of BT.2020, said or not.
	return u"setparams=color_primaries=bt2020:colorspace=bt2020nc,zscale=transfer=linear:npl=203,format=gbrpf32le,zscale=primaries=bt709,"
	       "tonemap=tonemap=mobius:desat=0:peak=4.93,zscale=transfer=bt709:matrix=bt709:range=limited,"
	       "format=yuv420p"_s;
}

bool canMapTones()
{
	return ffmpeg::succeeds({u"-f"_s, u"lavfi"_s, u"-i"_s,
				 u"color=s=64x64,format=yuv420p10le,"
				 "setparams=color_primaries=bt2020:color_trc=smpte2084:colorspace=bt2020nc"_s,
				 u"-vf"_s, toneMapping(), u"-frames:v"_s, u"1"_s, u"-f"_s, u"null"_s, u"-"_s});
}
} // namespace

Colours ordinaryColours(const ffmpeg::Video &video, QStringList &notes)
{
	const QString plain = u"format=yuv420p"_s;
	if (video.hdrTransfer.isEmpty()) {
		return {plain, {}};
	}
	if (canMapTones()) {
		return {toneMapping(), u",setparams=color_primaries=bt709:color_trc=bt709"_s};
	}
	notes += u"its HDR colours look pale on ordinary screens, this ffmpeg can't convert them"_s;
	return {plain, u",setparams=color_primaries=bt2020:color_trc=%1"_s.arg(video.hdrTransfer)};
}
