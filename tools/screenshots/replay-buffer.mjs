// The Replay Buffer as the pictures need it.

/** Has OBS make a Replay Buffer from its start on; each replay is called NAME.mkv and written over the one before. */
export async function switchReplayBufferOn(home, name = "Replay") {
  await home.changeProfile((profile) => {
    const on = { RecRB: "true", RecRBTime: "120" };
    profile.SimpleOutput = { ...profile.SimpleOutput, ...on, RecRBPrefix: "", RecRBSuffix: "" };
    profile.AdvOut = { ...profile.AdvOut, ...on };
    profile.Output = { ...profile.Output, FilenameFormatting: name, OverwriteIfExists: "true" };
  });
}
