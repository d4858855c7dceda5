// Helpers whose events are not what the protocol wants. [what it does, command, its events, what the report says first]

const path = "a full path (no file: address, no ~, no variable)";
const scheme = "an address that begins with its scheme, as in https://…";

/** All of these are errors. `$here` in an event is the helper's folder. */
export const brokenMembers = [
  ["leaves out the kind", "recent", `{"folder":"/"}`, `an object has no member "event": {"folder":"/"}`],
  ["writes Event", "recent", `{"Event":"recent"}`, `an object has no member "event"; is "Event" meant to be that?`],
  ["writes type", "recent", `{"type":"recent"}`, `an object has no member "event"; is "type" meant to be that?`],
  ["wraps its event", "recent", `{"data":{"event":"recent"}}`, `the event is wrapped in "data"`],
  ["numbers its kinds", "recent", `{"event":7}`, `"event" must be a string but is 7`],
  ["misspells the kind", "recent", `{"event":"recents"}`, `"recents" is not an event; did you mean "recent"?`],
  ["writes a capital", "status", `{"event":"Status"}`, `"Status" is not an event; did you mean "status"?`],
  ["invents a kind", "recent", `{"event":"hello"}`, `"hello" is not an event of the protocol`],
  ["answers another command", "recent", `{"event":"status"}`, `"status" is not read after --recent`],
  [
    "tells an error that is not read",
    "status",
    `{"event":"error","error":"no network"}`,
    `"error" is not read after --status, so the user sees nothing of it (read: "status")`,
  ],

  [
    "misspells login",
    "status",
    `{"event":"status","linked":true,"login_name":"ana"}`,
    `"status" has no member "login_name"; did you mean "login"?`,
  ],
  [
    "misspells fonts",
    "status",
    `{"event":"status","linked":true,"login":"a","fontz":["inter"]}`,
    `"status" has no member "fontz"; did you mean "fonts"?`,
  ],
  ["misspells linked", "status", `{"event":"status","Linked":true}`, `"status" has no member "Linked"; did you mean`],
  [
    "writes a word for a switch",
    "status",
    `{"event":"status","linked":"yes"}`,
    `"linked" of "status" must be true or false but is "yes"`,
  ],
  [
    "writes a number for a switch",
    "status",
    `{"event":"status","linked":1}`,
    `"linked" of "status" must be true or false but is 1`,
  ],
  [
    "writes null",
    "status",
    `{"event":"status","linked":null}`,
    `"linked" of "status" must be true or false but is null`,
  ],
  [
    "lists one key as a text",
    "status",
    `{"event":"status","linked":false,"layouts":"podcast"}`,
    `"layouts" of "status" must be an array but is "podcast"`,
  ],
  [
    "describes its keys",
    "status",
    `{"event":"status","linked":false,"fonts":[{"key":"inter"}]}`,
    `"fonts[0]" of "status" must be a string but is {"key":"inter"}`,
  ],
  [
    "offers an empty key",
    "status",
    `{"event":"status","linked":false,"styles":[""]}`,
    `"styles[0]" of "status" is empty`,
  ],
  [
    "writes the @ itself",
    "status",
    `{"event":"status","linked":true,"login":"@ana"}`,
    `"login" of "status" must be a name without the leading @, which the dock adds, but is "@ana"`,
  ],
  [
    "lets markup through",
    "status",
    `{"event":"status","linked":true,"login":"<b>ana</b>"}`,
    `a name contains a tag, which the dock may read as markup; remove "<" from what other people wrote: <b>ana</b>`,
  ],

  [
    "gives an address without a scheme",
    "link",
    `{"event":"code","url":"accounts.example","code":"A"}`,
    `"url" of "code" must be ${scheme}, but is "accounts.example"`,
  ],
  ["gives no address", "link", `{"event":"code","code":"A"}`, `"code" lacks the member "url"`],
  [
    "gives a number for a code",
    "link",
    `{"event":"code","url":"https://a.example","code":1234}`,
    `"code" of "code" must be a string but is 1234`,
  ],
  [
    "links and forgets it",
    "link",
    `{"event":"linked"}`,
    `it reported "linked", but --status then reports no linked account`,
  ],
  ["tells no reason", "link", `{"event":"error"}`, `"error" lacks the member "error"`],
  ["has no words for its reason", "link", `{"event":"error","error":""}`, `"error" of "error" is empty`],
  ["hides its reason", "link", `{"event":"error","err":"no"}`, `"error" has no member "err"; did you mean "error"?`],

  [
    "writes a path instead of a list",
    "process",
    `{"event":"done","formatted":"/a.mp4"}`,
    `"formatted" of "done" must be an array but is "/a.mp4"`,
  ],
  [
    "makes a Short somewhere",
    "process",
    `{"event":"done","formatted":["a.mp4"]}`,
    `"formatted[0]" of "done" must be ${path}, but is "a.mp4"`,
  ],
  [
    "gives an address for a path",
    "process",
    `{"event":"done","formatted":["file:///a.mp4"]}`,
    `"formatted[0]" of "done" must be ${path}, but is "file:///a.mp4"`,
  ],
  [
    "writes ~ for a home",
    "process",
    `{"event":"done","formatted":["~/a.mp4"]}`,
    `"formatted[0]" of "done" must be ${path}, but is "~/a.mp4"`,
  ],
  [
    "makes no Short",
    "process",
    `{"event":"done","formatted":["/nowhere/a.mp4"]}`,
    `"formatted[0]" names a file that does not exist: /nowhere/a.mp4`,
  ],
  [
    "makes an empty Short",
    "process",
    `{"event":"done","formatted":["$here/empty"]}`,
    `"formatted[0]" names an empty file:`,
  ],
  [
    "makes a folder",
    "process",
    `{"event":"done","formatted":["$here"]}`,
    `"formatted[0]" names a folder where a file is wanted:`,
  ],
  [
    "hands the replay back",
    "process",
    `{"event":"done","formatted":["$2"]}`,
    `"formatted[0]" names the replay itself, not a Short`,
  ],
  [
    "does not double backslashes that JSON knows",
    "process",
    `{"event":"done","formatted":["/home\\new.mp4"]}`,
    `"formatted[0]" contains a control character; is a backslash not doubled?`,
  ],

  [
    "names a folder that does not exist",
    "recent",
    `{"event":"recent","folder":"/nowhere"}`,
    `"folder" names a folder that does not exist: /nowhere`,
  ],
  [
    "names a folder of another system",
    "recent",
    `{"event":"recent","folder":"D:/Shorts"}`,
    `"folder" is a path of another system: D:/Shorts`,
  ],
  [
    "names a folder of its own",
    "recent",
    `{"event":"recent","folder":"Shorts"}`,
    `"folder" of "recent" must be ${path}, but is "Shorts"`,
  ],
  [
    "lists names alone",
    "recent",
    `{"event":"recent","folder":"/","items":["a.mp4"]}`,
    `"items[0]" of "recent" must be an object but is "a.mp4"`,
  ],
  [
    "lists a clip without a path",
    "recent",
    `{"event":"recent","folder":"/","items":[{"name":"a"}]}`,
    `"items[0]" of "recent" lacks the member "path"`,
  ],
  [
    "lists a clip that does not exist",
    "recent",
    `{"event":"recent","folder":"/","items":[{"name":"a","path":"/a.mp4"}]}`,
    `"items[0].path" names a file that does not exist: /a.mp4`,
  ],
  [
    "names its items clips",
    "recent",
    `{"event":"recent","folder":"/","item":[]}`,
    `"recent" has no member "item"; did you mean "items"?`,
  ],

  [
    "names a preview that does not exist",
    "preview",
    `{"event":"preview","path":"/nowhere.png"}`,
    `"path" of "preview" names a file that does not exist: /nowhere.png`,
  ],
  ["has no path", "preview", `{"event":"preview","path":null}`, `"path" of "preview" must be a string but is null`],
  [
    "sends the picture itself",
    "preview",
    `{"event":"preview","path":"data:image/png;base64,iVBORw0KGgo="}`,
    `"path" of "preview" must be ${path}, but is "data:image/png`,
  ],

  [
    "asks for a consent nowhere",
    "chat-get",
    `{"event":"chat","command":"!a","enabled":true}`,
    `"consent_url" is missing while "granted" is false`,
  ],
  [
    "writes fractions",
    "chat-get",
    `{"event":"chat","command":"!a","cooldown_s":12.5}`,
    `"cooldown_s" of "chat" must be a whole number but is 12.5`,
  ],
  [
    "writes numbers as texts",
    "chat-get",
    `{"event":"chat","command":"!a","per_stream_cap":"10"}`,
    `"per_stream_cap" of "chat" must be a whole number but is "10"`,
  ],
  [
    "forgets the unit",
    "chat-get",
    `{"event":"chat","command":"!a","cooldown":30}`,
    `"chat" has no member "cooldown"; did you mean "cooldown_s"?`,
  ],
  [
    "tells a failure as an error",
    "chat-get",
    `{"event":"error","error":"no network"}`,
    `"error" is not read after --chat-get, so the user sees nothing of it (read: "chat")`,
  ],

  [
    "lists chatters by name",
    "poll-triggers",
    `{"event":"triggers","triggers":["ana"]}`,
    `"triggers[0]" of "triggers" must be an object but is "ana"`,
  ],
  [
    "credits nobody",
    "poll-triggers",
    `{"event":"triggers","triggers":[{"user":"ana"}]}`,
    `"triggers[0]" of "triggers" lacks the member "by"`,
  ],
  [
    "credits an @",
    "poll-triggers",
    `{"event":"triggers","triggers":[{"by":"@ana"}]}`,
    `"triggers[0].by" of "triggers" must be a name without the leading @, which the dock adds, but is "@ana"`,
  ],
  [
    "tells every use again and again",
    "poll-triggers",
    `{"event":"triggers","triggers":[{"by":"ana"}]}`,
    "two polls reported the same uses: the dock makes a clip each time",
  ],

  ["names no version", "check-update", `{"event":"update","update":true}`, `"latest" is empty`],
  [
    "writes the v itself",
    "check-update",
    `{"event":"update","update":true,"latest":"v1.0.7"}`,
    `"latest" of "update" must be a version without a leading "v", which the dock adds, but is "v1.0.7"`,
  ],
  [
    "writes a newline after the version",
    "check-update",
    `{"event":"update","update":true,"latest":"1.0.7\\n"}`,
    `"latest" has spaces around it, but must later equal the installed version: "1.0.7\\n"`,
  ],
  [
    "writes a version for a switch",
    "check-update",
    `{"event":"update","update":"1.0.7"}`,
    `"update" of "update" must be true or false but is "1.0.7"`,
  ],
  [
    "writes a version as a number",
    "check-update",
    `{"event":"update","update":true,"latest":1.1}`,
    `"latest" of "update" must be a string but is 1.1`,
  ],
  [
    "offers and never delivers",
    "download-update",
    `{"event":"update","update":true,"latest":"2"}`,
    `no "downloaded" or "update" or "error" event came: the dock shows "Update failed`,
  ],
  [
    "delivers nothing",
    "download-update",
    `{"event":"downloaded","path":"/nowhere.exe"}`,
    `"path" of "downloaded" names a file that does not exist: /nowhere.exe`,
  ],
  [
    "counts in words",
    "download-update",
    `{"event":"progress","phase":"download","percent":"42%"}`,
    `"percent" of "progress" must be a whole number but is "42%"`,
  ],
  ["names no phase", "download-update", `{"event":"progress","percent":42}`, `"progress" lacks the member "phase"`],
];

/** These work, but the user gets something odd: warnings. */
export const oddMembers = [
  [
    "adds a member",
    "recent",
    `{"event":"recent","folder":"/","colour":1}`,
    `"recent" has no member "colour"; the dock ignores it`,
  ],
  ["does not say whether", "status", `{"event":"status"}`, `"status" lacks "linked": the dock shows "Not connected"`],
  ["names nobody", "status", `{"event":"status","linked":true}`, `an account is linked but "login" is empty`],
  [
    "explains what nobody reads",
    "status",
    `{"event":"status","linked":false,"error":"Revoked"}`,
    `"error" of "status" is "Revoked", but only "revoked" is looked at`,
  ],
  [
    "chooses what it does not offer",
    "status",
    `{"event":"status","linked":false,"layout":"a","layouts":["b"]}`,
    `"layout" is "a", which "layouts" does not offer`,
  ],
  [
    "offers names for keys",
    "status",
    `{"event":"status","linked":false,"fonts":["Bebas Neue"]}`,
    `"fonts" offers "Bebas Neue", which the dock does not know; did you mean "bebas"?`,
  ],
  [
    "misspells a key",
    "status",
    `{"event":"status","linked":false,"layouts":["podcst"]}`,
    `"layouts" offers "podcst", which the dock does not know; did you mean "podcast"?`,
  ],
  [
    "offers a key twice",
    "status",
    `{"event":"status","linked":false,"styles":["neon","neon"]}`,
    `"styles" offers "neon" twice`,
  ],
  ["has no folder", "recent", `{"event":"recent"}`, `"folder" is empty: "Open output folder" does nothing`],
  [
    "lists a clip without a name",
    "recent",
    `{"event":"recent","folder":"/","items":[{"name":"","path":"$here/helper"}]}`,
    `"items[0].name" is empty: the list shows an empty line`,
  ],
  ["has no preview", "preview", `{"event":"preview"}`, `"preview" names no "path", so the preview is hidden`],
  [
    "previews a text",
    "preview",
    `{"event":"preview","path":"$here/helper"}`,
    "the preview is not a PNG, JPEG, GIF or BMP file",
  ],
  [
    "goes beyond a range",
    "chat-get",
    `{"event":"chat","command":"!a","cooldown_s":5}`,
    `"cooldown_s" of "chat" is 5, out of its range (the limit is 10)`,
  ],
  ["has no settings", "chat-get", `{"event":"chat"}`, `"chat" has no "command", so the section is not filled in`],
  ["forgets the list", "poll-triggers", `{"event":"triggers"}`, `"triggers" lacks "triggers": no clip is made`],
  [
    "marks its notes up",
    "check-update",
    `{"event":"update","update":true,"latest":"2","notes":"<b>new</b>"}`,
    `"notes" of "update" contains a tag, which the dock may read as markup`,
  ],
  [
    "fails with a word",
    "link",
    `{"event":"error","error":"no network"}`,
    `it ends in an "error" event; the user reads: no network`,
  ],
  [
    "answers twice",
    "recent",
    `{"event":"recent","folder":"/"}\\n{"event":"recent","folder":"/"}`,
    `it answers 2 times ("recent", "recent"); the dock shows the last`,
  ],
  [
    "makes a Short without a name",
    "process",
    `{"event":"done"}`,
    `"formatted" is empty: the dock shows "Your Short is`,
  ],
];
