#pragma once

#include "dock/choice_tables.hpp"

#include <util/config-file.h>

/// The shortest Replay Buffer that holds every clip length.
inline constexpr int minimumReplayTime_s = 120;
static_assert(minimumReplayTime_s >= clipLengths_s.back());

/// Enables the Replay Buffer, with at least minimumReplayTime_s, in both output modes. True if anything changed; the
/// caller saves the profile.
bool enableReplayBuffer(config_t *profile);
