#pragma once

#include "video/excerpt.hpp"

/// Two seconds of a moving picture and a tone, which stand for a replay. Made in `folder` if it is not there yet.
/// Throws Failure.
Excerpt trialReplay(const QString &folder);
