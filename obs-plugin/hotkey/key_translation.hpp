#pragma once

#include <Qt>

#include <obs.h>

class QKeyEvent;

/// The OBS key of a key press; OBS_KEY_NONE if it cannot be a hotkey.
obs_key_t qtKeyToObsKey(const QKeyEvent &event);

/// The OBS key of a Qt key code, for keys whose platform code says nothing.
obs_key_t obsKeyFromQtKey(int qtKey);

uint32_t obsModifiers(Qt::KeyboardModifiers modifiers);
