#pragma once

#include <QString>

/// Removes what runs left behind that were killed (OBS was closed, the power failed): half-made Shorts after ten
/// minutes and scratch folders, which may hold what somebody said, after a day. Never removes `replay` itself.
void removeLeftovers(const QString &replay);
