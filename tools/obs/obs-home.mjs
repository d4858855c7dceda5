// OBS's own home folder: settings that ask the user nothing, a scene with a moving picture, and the module under test.
// The user's OBS settings are never touched.

import { mkdir, readFile, symlink, writeFile } from "node:fs/promises";
import path from "node:path";
import { formatIni, parseIni } from "./ini.mjs";
import { dockState, windowGeometry } from "./window-layout.mjs";

export class ObsHome {
  #config;

  /** `seed` makes `folder`; paths below are absolute if `folder` is. */
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
   * Writes the configuration.
   *
   * @param canvas         {width, height, fps} of OBS's picture.
   * @param video          video that the only scene loops.
   * @param modules        folders of more modules, in the layout NAME/bin/64bit/NAME.so.
   * @param hotkey         binding record of the clip hotkey, or undefined.
   * @param preferences    the module's preferences, or undefined.
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

  /** Sets obs-websocket's port and password (none if undefined), or turns its server off. OBS must not be running. */
  async setWebsocketPort(port, password) {
    const file = path.join(this.#config, "plugin_config", "obs-websocket", "config.json");
    await this.#write(file, JSON.stringify(websocketSettings(port, password)));
  }

  /** Removes the saved dock layout, so modules' docks stay hidden. OBS must not be running. */
  async forgetDockState() {
    const settings = parseIni(await readFile(this.userFile, "utf8"));
    delete settings.BasicWindow.DockState;
    await writeFile(this.userFile, formatIni(settings));
  }

  /** Disables one of OBS's modules, as in its plugin manager. OBS must not be running. */
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

  /** The profile on disk, by section; all values are strings. */
  async readProfile() {
    return parseIni(await readFile(this.profileFile, "utf8"));
  }

  /**
   * These pass the file's content to `change`, which edits it in place. OBS must not be running: it would overwrite the
   * file.
   */
  async changeProfile(change) {
    await changeIni(this.profileFile, change);
  }

  /** For settings outside of any profile. */
  async changeUserSettings(change) {
    await changeIni(this.userFile, change);
  }

  async changeSceneCollection(change) {
    await changeJson(this.sceneFile, change);
  }

  async changePreferences(change) {
    await changeJson(this.preferencesFile, change);
  }

  /** Makes a program use this home. */
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
