#pragma once

#include <QJsonObject>

/// What the dock shows: its position and the widgets named `widgetName`, or all if that is null, in screen pixels for
/// tests to click. "found" is false without a dock. User-interface thread; taking all widgets blocks it for several
/// milliseconds.
QJsonObject dockSnapshot(const QString &widgetName);
