#pragma once

#include <QString>

/// Path of the helper program: KESTRUNE_HELPER, else the one beside the module if it exists, else the per-user
/// install. The path may not exist. Looked up anew on each call, so that an install shows at once. User-interface
/// thread.
QString locateHelper();
