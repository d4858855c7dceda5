#pragma once

#include "dock/choice_tables.hpp"

#include <util/config-file.h>

/// The Replay Buffer's shortest useful history: the longest clip that the dock offers.
inline constexpr int minimumReplayTime_s = 120;
static_assert(minimumReplayTime_s >= clipLengths_s.back());

/// Switches the Replay Buffer on, with at least minimumReplayTime_s, for both output modes of an OBS profile.
/// Answers whether anything had to change; saving is the caller's.
bool enableReplayBuffer(config_t *profile);
