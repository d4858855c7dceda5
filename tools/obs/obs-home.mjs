// A home folder of its own for OBS: settings that need no wizard and no answer from a person, a scene with a moving
// picture, and the module under test. Nobody's own OBS settings are read or written.

import { mkdir, readFile, symlink, writeFile } from "node:fs/promises";
import path from "node:path";
import { formatIni, parseIni } from "./ini.mjs";
import { dockState, windowGeometry } from "./window-layout.mjs";

export class ObsHome {
  #config;

  /** `folder` is made by `seed`; every path below is absolute when `folder` is. */
  constructor(folder) {
    this.folder = folder;
    this.#config = path.join(folder, ".config", "obs-studio");
    this.profileFile = path.join(this.#config, "basic", "profiles", "Untitled", "basic.ini");
    this.sceneFile = path.join(this.#config, "basic", "scenes", "Untitled.json");
    this.userFile = path.join(this.#config, "user.ini");
    this.preferencesFile = path.join(this.#config, "plugin_config", "kestrune", "settings.json");
    this.recordings = path.join(folder, "replays");
    this.runtimeFolder = path.join(folder, "run");
  }

  /**
   * Writes the whole configuration.
   *
   * @param canvas       {width, height, fps} of the picture that OBS makes.
   * @param video        path of the video that the one scene plays in a loop.
   * @param modules      folders in the layout NAME/bin/64bit/NAME.so to load besides OBS's own modules.
   * @param hotkey       binding record for the clip hotkey, or undefined for none.
   * @param preferences  contents of the module's preferences file, or undefined for none.
   * @param websocketPort  as for `setWebsocketPort`.
   */
  async seed({ canvas, video, modules, hotkey, preferences, websocketPort }) {
    await mkdir(this.recordings, { recursive: true });
    await mkdir(this.runtimeFolder, { recursive: true, mode: 0o700 });
    await this.#write(this.userFile, formatIni(userSettings()));
    await this.#write(this.profileFile, formatIni(profile(canvas, this.recordings)));
    await this.#write(this.sceneFile, JSON.stringify(sceneCollection(canvas, video, hotkey)));
    if (preferences) {
      await this.#write(this.preferencesFile, JSON.stringify(preferences));
    }
    await this.setWebsocketPort(websocketPort);
    await mkdir(path.join(this.#config, "plugins"), { recursive: true });
    for (const folder of modules) {
      await symlink(folder, path.join(this.#config, "plugins", path.basename(folder)));
    }
  }

  /**
   * Sets the port for obs-websocket, or leaves its server off when it is undefined; asks clients for the password, if any.
   * OBS must not be running.
   */
  async setWebsocketPort(port, password) {
    const file = path.join(this.#config, "plugin_config", "obs-websocket", "config.json");
    await this.#write(file, JSON.stringify(websocketSettings(port, password)));
  }

  /** Lets OBS find no arrangement of its docks: those of modules stay hidden; OBS must not be running. */
  async forgetDockState() {
    const settings = parseIni(await readFile(this.userFile, "utf8"));
    delete settings.BasicWindow.DockState;
    await writeFile(this.userFile, formatIni(settings));
  }

  /** Makes OBS skip one of its own modules, as a person does in its plugin manager; OBS must not be running. */
  async disableModule(name) {
    const entry = {
      display_name: name,
      module_name: name,
      id: "",
      version: "",
      enabled: false,
      encoders: [],
      outputs: [],
      services: [],
      sources: [],
    };
    await this.#write(path.join(this.#config, "plugin_manager", "modules.json"), JSON.stringify([entry]));
  }

  /** The profile as it is on disk now: an object of sections, all values strings. */
  async readProfile() {
    return parseIni(await readFile(this.profileFile, "utf8"));
  }

  /**
   * Changes the profile, the scene collection or the module's preferences on disk: `change` is given the contents as
   * an object (of sections for the profile) and changes it in place. OBS must not run: it would not read the change
   * and would write over it.
   */
  async changeProfile(change) {
    await changeIni(this.profileFile, change);
  }

  /** The same for the settings that belong to no profile. */
  async changeUserSettings(change) {
    await changeIni(this.userFile, change);
  }

  async changeSceneCollection(change) {
    await changeJson(this.sceneFile, change);
  }

  async changePreferences(change) {
    await changeJson(this.preferencesFile, change);
  }

  /** Environment variables that make a program live in this home. */
  environment() {
    return {
      HOME: this.folder,
      XDG_CONFIG_HOME: path.join(this.folder, ".config"),
      XDG_CACHE_HOME: path.join(this.folder, ".cache"),
      XDG_DATA_HOME: path.join(this.folder, ".local", "share"),
      XDG_RUNTIME_DIR: this.runtimeFolder,
    };
  }

  async #write(file, text) {
    await mkdir(path.dirname(file), { recursive: true });
    await writeFile(file, text);
  }
}

async function changeIni(file, change) {
  const sections = parseIni(await readFile(file, "utf8"));
  change(sections);
  await writeFile(file, formatIni(sections));
}

async function changeJson(file, change) {
  const contents = JSON.parse(await readFile(file, "utf8"));
  change(contents);
  await writeFile(file, JSON.stringify(contents));
}

function userSettings() {
  return {
    General: { FirstRun: true, ConfirmOnExit: false },
    Basic: {
      Profile: "Untitled",
      ProfileDir: "Untitled",
      SceneCollection: "Untitled",
      SceneCollectionFile: "Untitled.json",
      ConfigOnNewProfile: false,
    },
    BasicWindow: { SysTrayEnabled: false, geometry: windowGeometry, DockState: dockState },
  };
}

function profile(canvas, recordings) {
  return {
    General: { Name: "Untitled" },
    Output: { Mode: "Simple" },
    SimpleOutput: {
      FilePath: recordings,
      RecQuality: "Small",
      RecEncoder: "x264",
      RecFormat2: "mkv",
      StreamEncoder: "x264",
    },
    Video: {
      BaseCX: canvas.width,
      BaseCY: canvas.height,
      OutputCX: canvas.width,
      OutputCY: canvas.height,
      FPSType: 1,
      FPSInt: canvas.fps,
    },
  };
}

function sceneCollection(canvas, video, hotkey) {
  const picture = "Test picture";
  const scene = "Scene";
  const item = {
    name: picture,
    id: 1,
    visible: true,
    bounds_type: 2,
    bounds: { x: canvas.width, y: canvas.height },
  };
  return {
    name: "Untitled",
    current_scene: scene,
    current_program_scene: scene,
    scene_order: [{ name: scene }],
    sources: [
      {
        id: "ffmpeg_source",
        name: picture,
        settings: { is_local_file: true, local_file: video, looping: true },
        mixers: 1,
      },
      { id: "scene", name: scene, settings: { id_counter: 1, items: [item] } },
    ],
    modules: hotkey ? { kestrune_hotkey: [hotkey] } : {},
  };
}

function websocketSettings(port, password) {
  return {
    first_load: false,
    server_enabled: port !== undefined,
    auth_required: password !== undefined,
    alerts_enabled: false,
    ...(password === undefined ? {} : { server_password: password }),
    ...(port === undefined ? {} : { server_port: port }),
  };
}
