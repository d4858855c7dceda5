#pragma once

/// Removes all hotkeys and bindings.
void forgetHotkeys();
