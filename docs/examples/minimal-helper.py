#!/usr/bin/env python3
"""A minimal Kestrune helper: cuts vertical Shorts out of the middle of the picture. Needs ffmpeg."""
import json
import subprocess
import sys
import uuid
from pathlib import Path

shorts = Path.home() / "Kestrune Shorts"


def tell(**event):
    print(json.dumps(event), flush=True)


def process(replay, seconds):
    short = shorts / f"{Path(replay).stem} {uuid.uuid4().hex[:8]}.mp4"
    unfinished = short.with_suffix(".part")
    # If the replay is shorter, ffmpeg takes all of it.
    cut = ["ffmpeg", "-v", "error", "-sseof", f"-{seconds}", "-i", replay, "-vf", "crop=ih*9/16:ih,scale=1080:1920"]
    subprocess.run([*cut, "-f", "mp4", unfinished], check=True, stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    unfinished.rename(short)
    tell(event="done", formatted=[str(short)])


shorts.mkdir(exist_ok=True)
command, *rest = sys.argv[1:] or ["none"]
if command == "--status":
    tell(event="status", linked=True, login="me", layouts=["gameplay"], styles=["none"])
elif command == "--process":
    try:
        process(rest[0], rest[2])
    except (OSError, subprocess.CalledProcessError):
        tell(event="error", error="ffmpeg is missing or could not make the Short.")
elif command == "--recent":
    newest = sorted(shorts.glob("*.mp4"), key=lambda short: short.stat().st_mtime, reverse=True)[:20]
    tell(event="recent", folder=str(shorts), items=[{"name": short.name, "path": str(short)} for short in newest])
