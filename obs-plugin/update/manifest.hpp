#pragma once

#include <QString>

class QByteArray;

/// The installed version, from the file KESTRUNE_MANIFEST or else "manifest.json" in the module's data. Empty if
/// unreadable. User-interface thread.
QString installedVersion();

/// The "version" in a manifest's JSON; empty without one.
QString manifestVersion(const QByteArray &json);
