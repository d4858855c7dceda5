// The drawn stream in OBS: a game, and a camera over it.

import path from "node:path";
import { cameraArea, full, makePicture, makeVideo } from "./stream.mjs";

/** The moment that all pictures show, in seconds. */
const still = 2.3;

/** Replaces the scene with one that shows the stream. `folder` gets its files; `canvas` is OBS's. */
export async function putStreamOn(home, folder, canvas) {
  const game = path.join(folder, "game.mp4");
  const camera = path.join(folder, "camera.png");
  await makeVideo(game, "game", { width: canvas.width, fps: canvas.fps, seconds: 6, still });
  await makePicture(camera, "camera", { width: cameraArea.width, time: still });
  await home.changeSceneCollection((collection) => {
    Object.assign(collection, sceneCollection(game, camera, canvas));
  });
}

function sceneCollection(game, camera, canvas) {
  const scale = canvas.width / full.width;
  const fit = (width, height) => ({ bounds_type: 2, bounds: { x: width * scale, y: height * scale } });
  const items = [
    { name: "Game", id: 1, visible: true, ...fit(full.width, full.height) },
    {
      name: "Camera",
      id: 2,
      visible: true,
      ...fit(cameraArea.width, cameraArea.height),
      pos: { x: cameraArea.x * scale, y: cameraArea.y * scale },
    },
  ];
  const scenes = { "Starting soon": [], Playing: items, "Back in a minute": [] };
  const names = Object.keys(scenes);
  return {
    current_scene: "Playing",
    current_program_scene: "Playing",
    scene_order: names.map((name) => ({ name })),
    sources: [
      {
        id: "ffmpeg_source",
        name: "Game",
        settings: { is_local_file: true, local_file: game, looping: true },
        mixers: 1,
      },
      { id: "image_source", name: "Camera", settings: { file: camera } },
      ...names.map((name) => ({
        id: "scene",
        name,
        settings: { id_counter: scenes[name].length, items: scenes[name] },
      })),
    ],
  };
}
