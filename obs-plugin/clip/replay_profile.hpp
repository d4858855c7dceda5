#pragma once

#include "dock/choice_tables.hpp"

#include <util/config-file.h>

/// The shortest Replay Buffer that holds every clip length.
inline constexpr int minimumReplayTime_s = 120;
static_assert(minimumReplayTime_s >= clipLengths_s.back());

/// Makes sure that both output modes have the Replay Buffer on, for minimumReplayTime_s or longer. One that is off or
/// shorter is set to exactly that. True if anything changed; the caller saves the profile.
bool enableReplayBuffer(config_t *profile);
