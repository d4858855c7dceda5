// How OBS's main window is arranged: 1280x860 pixels at the top left, with the dock "kestrune" at its right side.
// A dock is hidden when a module adds it for the first time, so a fresh configuration would not show it.
// Both values are what OBS itself saved in user.ini (section BasicWindow) after its docks had been arranged so.

/** Value of the key "geometry". */
export const windowGeometry =
  "AdnQywADAAAAAAAAAAAAAAAABP8AAANbAAAAAAAAAAAAAAT/AAADWwAAAAAAAAAABQAAAAAAAAAAAAAABP8AAANb";

/** Value of the key "DockState". */
export const dockState = [
  "AAAA/wAAAAD9AAAAAwAAAAAAAAEYAAADIPwCAAAAAvsAAAAUAHMAYwBlAG4AZQBzAEQAbwBjAGsBAAAAGgAAAY4AAACMAP////sAAAAWAHMA",
  "bwB1AHIAYwBlAHMARABvAGMAawEAAAGsAAABjgAAAIwA////AAAAAQAAAV4AAAMg/AIAAAAB+wAAABAAawBlAHMAdAByAHUAbgBlAQAAABoA",
  "AAMgAAAA4gD///8AAAADAAACggAAAQP8AQAAAAT7AAAAEgBtAGkAeABlAHIARABvAGMAawEAAAEcAAABVgAAAQIA////+wAAAB4AdAByAGEA",
  "bgBzAGkAdABpAG8AbgBzAEQAbwBjAGsBAAACdgAAAIIAAACCAP////sAAAAYAGMAbwBuAHQAcgBvAGwAcwBEAG8AYwBrAQAAAvwAAACiAAAA",
  "ogD////7AAAAEgBzAHQAYQB0AHMARABvAGMAawIAAAEiAAABfAAAArwAAADIAAACggAAAhkAAAABAAAAAgAAAAEAAAAC/AAAAAA=",
].join("");
