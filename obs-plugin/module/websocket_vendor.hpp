#pragma once

/// Registers the obs-websocket vendor "Kestrune" with its requests "ClipThat" and "GetStatus", when obs-websocket is
/// there. User-interface thread, after all modules have loaded.
void registerWebsocketVendor();

/// Forgets obs-websocket, which is about to go or gone; nothing is unregistered there. User-interface thread, at
/// unload.
void forgetWebsocketVendor();
