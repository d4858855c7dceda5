#pragma once

#include <QString>

#include "dock/clip_choices.hpp"

#include <obs.hpp>

#include <functional>
#include <optional>

/// Path of "settings.json" in the module's configuration folder; empty if OBS has none.
QString settingsPath();

/// The content of the file or, if that is unreadable, its backup; null if neither can be read.
OBSDataAutoRelease readPreferences();

/// Saves the keys that `change` sets and keeps all others. The previous file becomes the backup, and one of the two is
/// readable at any moment. Fails silently. User-interface thread.
void updatePreferences(const std::function<void(obs_data_t *changed)> &change);

/// The saved choices; nothing if the file cannot be read. A missing member reads as 0 or empty.
std::optional<ClipChoices> storedChoices();

/// Saves `choices`. Fails silently. User-interface thread.
void storeChoices(const ClipChoices &choices);
