#include <QFileInfo>

#include "doctor/trial_replay.hpp"
#include "video/ffmpeg.hpp"

using namespace Qt::StringLiterals;

Excerpt trialReplay(const QString &folder)
{
	constexpr int length_s = 2;
	const QString path = folder + u"/replay.mkv"_s;
	if (!QFileInfo::exists(path)) {
		// With encoders that every ffmpeg has.
		ffmpeg::run({u"-f"_s, u"lavfi"_s, u"-i"_s, u"testsrc2=s=1280x720:r=30"_s, u"-f"_s, u"lavfi"_s, u"-i"_s,
			     u"sine=r=48000"_s, u"-t"_s, QString::number(length_s), u"-c:v"_s, u"mpeg4"_s, u"-q:v"_s,
			     u"3"_s, u"-c:a"_s, u"pcm_s16le"_s, path},
			    folder);
	}
	return lastSecondsOf(path, length_s);
}
