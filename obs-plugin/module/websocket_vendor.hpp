#pragma once

/// Registers the vendor "Kestrune" with obs-websocket, if that is loaded. Call after all modules have loaded.
/// User-interface thread.
void registerWebsocketVendor();

/// Forgets obs-websocket, which may be gone already, so nothing is unregistered. User-interface thread, at unload.
void forgetWebsocketVendor();
