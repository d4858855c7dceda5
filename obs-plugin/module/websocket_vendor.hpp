#pragma once

/// Registers the vendor "Kestrune" with obs-websocket, if that is loaded. Call after all modules have loaded. Nothing
/// is unregistered: when this module is unloaded, obs-websocket may be gone already. User-interface thread.
void registerWebsocketVendor();
