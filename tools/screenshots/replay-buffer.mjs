// The Replay Buffer as the pictures need it.

/** Has OBS make a Replay Buffer from its start on; each replay is called NAME.mkv and written over the one before. */
export async function switchReplayBufferOn(home, name = "Replay") {
  await home.changeProfile((profile) => {
    profile.SimpleOutput = { ...profile.SimpleOutput, RecRB: "true", RecRBTime: "120", RecRBPrefix: "", RecRBSuffix: "" };
    profile.AdvOut = { ...profile.AdvOut, RecRB: "true", RecRBTime: "120" };
    profile.Output = { ...profile.Output, FilenameFormatting: name, OverwriteIfExists: "true" };
  });
}
