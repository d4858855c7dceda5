#pragma once

#include <QJsonObject>

/// What the Kestrune dock shows at this moment: its own place on the screen and the widgets in it that bear the object
/// name, all when that is null, with positions in screen pixels so that a test can click there. "found" is false when
/// there is no dock. User-interface thread only, and with all widgets it holds that for several milliseconds.
QJsonObject dockSnapshot(const QString &widgetName);
