#pragma once

#include <QString>

class QByteArray;

/// The version that the installed-version manifest names: the file at KESTRUNE_MANIFEST, else "manifest.json" among
/// the module's data files. Empty when it cannot be read. User-interface thread.
QString installedVersion();

/// The "version" of a manifest's JSON text; empty when there is none.
QString manifestVersion(const QByteArray &json);
