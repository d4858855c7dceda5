#!/usr/bin/env bash
# Prints how fast the sample helper makes a Short of 60 seconds of 1080p60, in multiples of real time. The processor
# time beside it does not depend on what else the machine does.
# Usage: measure-speed.sh SAMPLE_HELPER [LAYOUT...]
set -euo pipefail
export LC_ALL=C

helper=$(realpath "${1:?which sample-helper?}")
shift
layouts=("$@")
if ((${#layouts[@]} == 0)); then
	layouts=(vtuber-bubble vtuber facecam podcast gameplay)
fi
length=60

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
# A variable of the user's own must not decide what is measured, except ffmpeg and the encoder.
export KESTRUNE_SAMPLE_HELPER_HOME=$folder/state KESTRUNE_SAMPLE_HELPER_OUTPUT=
unset KESTRUNE_SAMPLE_HELPER_CAMERA KESTRUNE_SAMPLE_HELPER_OFFLINE KESTRUNE_SAMPLE_HELPER_CLIPS_AT_ONCE
unset KESTRUNE_SAMPLE_HELPER_WHISPER KESTRUNE_SAMPLE_HELPER_WHISPER_MODEL

# What OBS records: everything moves, with sound, 20 Mbit/s.
ffmpeg -v error -nostdin -f lavfi -i "testsrc2=s=1920x1080:r=60,noise=alls=6:allf=t" -f lavfi -i "sine=r=48000" \
	-t "$length" -c:v libx264 -preset ultrafast -b:v 20M -pix_fmt yuv420p -c:a aac "$folder/replay.mkv"
for ((second = 0; second < length; second += 3)); do
	printf '00:00:%02d,000 --> 00:00:%02d,900\nThis is what somebody says now\n\n' "$second" "$((second + 2))"
done >"$folder/replay.srt"

processor=$(sed -n '/^model name/{s/^[^:]*: //p;q}' /proc/cpuinfo)
echo "$(nproc) processors: $processor, load $(cut -d' ' -f1 /proc/loadavg)"
TIMEFORMAT='%R %U %S'
for layout in "${layouts[@]}"; do
	arguments=(--process "$folder/replay.mkv" --seconds "$length" --layout "$layout" --style neon)
	if ! times=$({ time "$helper" "${arguments[@]}" >"$folder/answer" 2>"$folder/log"; } 2>&1); then
		echo "measure-speed.sh: the helper failed with the layout $layout. Its answer and log:" >&2
		cat "$folder/answer" "$folder/log" >&2
		exit 1
	fi
	read -r took user system <<<"$times"
	encoder=$(sed -n 's/.*\] \(.*\) encoded .*/\1/p' "$folder/log")
	size=$(du -m "$folder"/state/Shorts/*.mp4 | cut -f1)
	rm "$folder"/state/Shorts/*.mp4
	awk -v layout="$layout" -v length_s="$length" -v took="$took" -v user="$user" -v system_s="$system" \
		-v encoder="$encoder" -v size="$size" \
		'BEGIN { printf "%-14s %4.2f times real time, %4.2f s of processor time per second, %d MB, %s\n",
			layout, length_s / took, (user + system_s) / length_s, size, encoder }'
done
