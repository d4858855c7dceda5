#pragma once

#include <QString>

#include "dock/clip_choices.hpp"

#include <obs.hpp>

#include <functional>
#include <optional>

/// The preferences file, "settings.json" in the module's configuration folder; empty when OBS has none.
QString settingsPath();

/// What the file (or, when that is unreadable, its backup) holds; null when neither can be read.
OBSDataAutoRelease readPreferences();

/// Writes the keys that `change` sets into the file. All other keys stay as they are, the previous file becomes the
/// backup, and at every moment the file or the backup is readable. Failure is silent. User-interface thread.
void updatePreferences(const std::function<void(obs_data_t *changed)> &change);

/// The choices that the file holds; nothing when it cannot be read. A missing member reads as 0 or empty.
std::optional<ClipChoices> storedChoices();

/// Stores `choices` in the file; failure is silent. User-interface thread.
void storeChoices(const ClipChoices &choices);
