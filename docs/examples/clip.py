"""Asks Kestrune for a clip. First: pip install simpleobsws; then: OBS_PASSWORD="your password" python3 clip.py"""
import asyncio
import os
import sys

try:
    import simpleobsws
except ImportError:
    sys.exit("First: pip install simpleobsws")

address = os.environ.get("OBS_ADDRESS", "ws://127.0.0.1:4455")
clip_that = simpleobsws.Request("CallVendorRequest", {"vendorName": "Kestrune", "requestType": "ClipThat"})


async def clip():
    obs = simpleobsws.WebSocketClient(url=address, password=os.environ.get("OBS_PASSWORD", ""))
    try:
        await obs.connect()
    except Exception as failure:
        sys.exit(f"Nothing answers at {address}: start OBS and switch on its WebSocket server. {failure}")
    if not await obs.wait_until_identified():
        sys.exit("OBS did not let this program in: check the password.")
    answer = await obs.call(clip_that)
    await obs.disconnect()
    if not answer.ok():
        sys.exit(f"OBS refused: {answer.requestStatus.comment}")
    print(answer.responseData["responseData"])


asyncio.run(clip())
