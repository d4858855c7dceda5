/** Enables the Replay Buffer from OBS's start; each replay overwrites NAME.mkv. */
export async function switchReplayBufferOn(home, name = "Replay") {
  await home.changeProfile((profile) => {
    const on = { RecRB: "true", RecRBTime: "120" };
    profile.SimpleOutput = { ...profile.SimpleOutput, ...on, RecRBPrefix: "", RecRBSuffix: "" };
    profile.AdvOut = { ...profile.AdvOut, ...on };
    profile.Output = { ...profile.Output, FilenameFormatting: name, OverwriteIfExists: "true" };
  });
}
