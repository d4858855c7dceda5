#include "commands/help.hpp"

const char *const helpText = R"(Usage: sample-helper COMMAND [OPTION]...

Makes captioned vertical Shorts of OBS replays for the Kestrune dock, without
account or network. Needs ffmpeg. Every answer is one line of JSON.

Clips:
  --process REPLAY       make a Short of the end of a replay, which stays as it is
  --preview              draw a still picture of a look
  --recent               list the newest Shorts

Account:
  --status               tell whether an account is linked and what can be chosen
  --link                 link this device (pretended, nothing leaves the computer)

Chat command:
  --chat-get             tell the settings
  --chat-set JSON        change the settings
  --poll-triggers        take the uses since the last poll

Updates:
  --check-update         tell whether another version is on offer
  --download-update      fetch the installer of the version on offer

For development:
  --unlink               forget the linked account
  --revoke               as if the account's owner had revoked this device
  --say NAME [TEXT]      as if NAME wrote TEXT in chat (default: the chat command)
  --new-stream           count the uses of the chat command from zero

  --help                 print this text
  --version              print the version

Options of --process and --preview (the last clip's choice when left out):
  --layout KEY           vtuber-bubble, vtuber, facecam, podcast or gameplay
  --style KEY            caption style: rune, neon, clean, meme or none
  --font KEY             bebas, montserrat, inter or bangers
  --caption-position KEY auto, top, middle or bottom

More options:
  --seconds N            with --process: length of the Short, 1 to 3600
  --scene NAME           with --process: where the replay comes from (not used)
  --no-browser           with --link: open no browser (this helper never does)

Captions come from a subtitle file beside the replay (NAME.srt or NAME.vtt), else
from its speech if whisper.cpp is configured, else they tell the time of the clip.

Environment (each name begins with KESTRUNE_SAMPLE_HELPER_):
  HOME                   folder of everything that is remembered
  OUTPUT                 folder for Shorts
  CAMERA                 where the camera is: LEFT,TOP,WIDTH,HEIGHT, as fractions
                         of the picture
  FFMPEG                 folder of ffmpeg and ffprobe (default: the PATH)
  ENCODER                h264_nvenc, h264_qsv, h264_amf, h264_videotoolbox,
                         h264_vaapi or libx264 (default: the first that works)
  WHISPER                whisper.cpp's program (default: whisper-cli, if
                         WHISPER_MODEL is set)
  WHISPER_MODEL          its model file
  WHISPER_LIMIT_MS       how long it may take (default: 600000)
  OFFLINE                1 pretends to be offline
README.md lists those for development.

Exit status:
  0                      done
  1                      the answer was an "error" event, or the chat settings
                         were refused

Examples:
  sample-helper --process "Replay 1.mkv" --seconds 60 --layout podcast
  sample-helper --preview --layout facecam --style neon
  KESTRUNE_HELPER=/path/to/sample-helper obs    (the dock uses this helper)
)";
