#pragma once

#include <QJsonObject>

/// What the Kestrune dock shows at this moment: its own place on the screen and every widget in it, with positions in
/// screen pixels so that a test can click there. "found" is false when there is no dock. User-interface thread only.
QJsonObject dockSnapshot();
