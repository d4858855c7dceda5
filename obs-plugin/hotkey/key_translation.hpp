#pragma once

#include <Qt>

#include <obs.h>

class QKeyEvent;

/// The OBS key of a key press; OBS_KEY_NONE when it cannot be used as a hotkey.
obs_key_t qtKeyToObsKey(const QKeyEvent &event);

/// The OBS key of a Qt key code, for keys that the platform's own code does not settle.
obs_key_t obsKeyFromQtKey(int qtKey);

/// Qt's keyboard modifiers as OBS's modifier bits.
uint32_t obsModifiers(Qt::KeyboardModifiers modifiers);
