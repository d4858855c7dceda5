#pragma once

#include <QString>

/// Path of the helper: KESTRUNE_HELPER, else the one beside the module if it exists, else the per-user install, which
/// may not exist. Looked up at each call to notice a new install. User-interface thread.
QString locateHelper();
