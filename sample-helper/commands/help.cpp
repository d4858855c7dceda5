#include <QStringList>

#include "commands/commands.hpp"
#include "commands/help.hpp"

#include <string_view>

using namespace Qt::StringLiterals;

namespace {
constexpr const char *introduction = R"(Usage: sample-helper COMMAND [OPTION]...

Makes captioned vertical Shorts of OBS replays for the Kestrune dock, without
account or network. Needs ffmpeg. Every answer is one line of JSON.
)";

constexpr const char *remarks = R"(
Captions come from a subtitle file beside the replay (NAME.srt or NAME.vtt), else
from its speech if whisper.cpp and a model are there, else they tell the time of
the clip. --doctor says what is missing.

Environment variables (each name begins with KESTRUNE_SAMPLE_HELPER_), or lines
"NAME = value" in the file settings.ini in the folder HOME:
  HOME                   folder of everything that is remembered
  OUTPUT                 folder for Shorts
  CAMERA                 where the camera is: LEFT,TOP,WIDTH,HEIGHT, as fractions
                         of the picture
  FFMPEG                 folder of ffmpeg and ffprobe (default: the PATH)
  ENCODER                h264_nvenc, h264_qsv, h264_amf, h264_videotoolbox,
                         h264_vaapi or libx264 (default: the first that works)
  CLIPS_AT_ONCE          how many clips are made at the same time (default: 1)
  WHISPER                whisper.cpp's program (default: whisper-cli)
  WHISPER_MODEL          its model file (default: the largest ggml-*.bin in the
                         folder models in HOME)
  WHISPER_LIMIT_MS       how long it may take (default: 600000)
  OFFLINE                1 pretends to be offline
README.md lists those for development.

Exit status:
  0                      done
  1                      the answer was an "error" event, the chat settings were
                         refused, or --doctor found that no Short can be made

Examples:
  sample-helper --process "Replay 1.mkv" --seconds 60 --layout podcast
  sample-helper --preview --layout facecam --style neon
  KESTRUNE_HELPER=/path/to/sample-helper obs    (the dock uses this helper)
)";

/// A line such as "  --process REPLAY       make a Short"; empty parts are left out.
QString helpLine(const char *name, const char *value, const char *words, const char *summary)
{
	constexpr qsizetype switchWidth = 23;
	QStringList parts{u"--"_s + QLatin1String(name), QLatin1String(value), QLatin1String(words)};
	parts.removeAll(QString());
	return u"  %1%2\n"_s.arg(parts.join(u' ').leftJustified(switchWidth), QLatin1String(summary));
}

QString commandLines()
{
	QString text{};
	std::string_view group{};
	for (const Command &command : commands()) {
		if (command.group != group) {
			group = command.group;
			text += u"\n%1:\n"_s.arg(QLatin1String(command.group));
		}
		text += helpLine(command.name, command.value, command.words, command.summary);
	}
	return text;
}

QString optionLines(std::span<const Option> options)
{
	QString text{};
	for (const Option &option : options) {
		text += helpLine(option.name, option.value, "", option.summary);
	}
	return text;
}
} // namespace

QString helpText()
{
	return QString::fromUtf8(introduction) + commandLines() + u'\n' + helpLine("help", "", "", "print this text") +
	       helpLine("version", "", "", "print the version") +
	       u"\nOptions of --process and --preview (the last clip's choice when left out):\n"_s +
	       optionLines(lookOptions()) + u"\nMore options:\n"_s + optionLines(otherOptions()) +
	       QString::fromUtf8(remarks);
}
