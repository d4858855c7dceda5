#include "clip/replay_profile.hpp"

#include <array>

bool enableReplayBuffer(config_t *profile)
{
	bool changed = false;
	// Both output modes, so that switching modes keeps the Replay Buffer on.
	for (const char *section : std::array{"SimpleOutput", "AdvOut"}) {
		if (config_get_bool(profile, section, "RecRB") &&
		    config_get_int(profile, section, "RecRBTime") >= minimumReplayTime_s) {
			continue;
		}
		config_set_bool(profile, section, "RecRB", true);
		config_set_int(profile, section, "RecRBTime", minimumReplayTime_s);
		changed = true;
	}
	return changed;
}
