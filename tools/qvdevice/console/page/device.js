// The device itself: its picture, which is touched by a click, and all that a user finds on it.

import { byId, make, setButtons } from "./dom.js";
import { happen, quoted } from "./send.js";

const kOffers = { sheet: "In the share sheet", openInMenu: "In the open-in menu", menu: "In the edit menu" };

const kEvents = [
  ["Background", "background"], ["Foreground", "foreground"], ["Resign", "resign"], ["Activate", "activate"],
  ["Copy", "perform copy:"], ["Paste", "perform paste:"], ["Edit menu", "menu"],
  ["Keyboard", "keyboard show"], ["Hide keyboard", "keyboard hide"],
  ["Rotate left", "rotate landscapeLeft"], ["Rotate upright", "rotate portrait"],
  ["Authenticate", "authenticate"], ["Alert", 'alert "Saved"'],
];

const kNames = ["activate", "resign", "background", "foreground", "set", "open", "touch", "tap", "perform", "menu",
  "cancel", "choose", "type", "dictate", "keyboard show", "keyboard hide", "extension tap", "extension type", "extension kill",
  "alert", "window show", "windows", "rotate portrait", "rotate landscapeLeft", "authenticate",
  "ask isPasscodeExtensionActive", "terminate"];

let size = { width: 0, height: 0 };

function touchScreen(event) {
  const picture = byId("screen");
  const box = picture.getBoundingClientRect();
  const x = ((event.clientX - box.left) / box.width) * size.width;
  const y = ((event.clientY - box.top) / box.height) * size.height;
  const within = (value, end) => Math.min(Math.max(Math.round(value * 10) / 10, 0), end - 0.1).toFixed(1);
  happen(`touch ${within(x, size.width)} ${within(y, size.height)}`);
}

function showScreen({ number, width, height }) {
  size = { width, height };
  const picture = byId("screen");
  picture.width = width;
  picture.height = height;
  picture.src = `screen.png?${number}`;
  picture.hidden = false;
  byId("no-screen").hidden = true;
}

function showControls({ buttons, unusable }) {
  setButtons(byId("app-buttons"), buttons.map(({ title, enabled }) => ({
    label: title, disabled: !enabled, press: () => happen(`tap ${quoted(title)}`),
  })));
  byId("unusable").hidden = !unusable;
  byId("unusable").textContent = unusable ? `Nothing on the screen answers: ${unusable}.` : "";
}

function showOffers({ by, titles }) {
  byId("offers").hidden = !by;
  byId("offers-heading").textContent = titles.length ? kOffers[by] : `${kOffers[by]} there is nothing`;
  const choices = titles.map((title) => ({ label: title, press: () => happen(`choose ${quoted(title)}`) }));
  setButtons(byId("offer-buttons"), by ? [...choices, { label: "Cancel", press: () => happen("cancel") }] : []);
}

function showExtension({ shown, silent, buttons = [] }) {
  byId("extension").hidden = !shown && !silent;
  byId("extension-silent").hidden = !silent;
  setButtons(byId("extension-buttons"), buttons.map(({ title, enabled }) => ({
    label: title, disabled: !enabled, press: () => happen(`extension tap ${quoted(title)}`),
  })));
}

/** Makes the controls; answers what shows the records of each kind. */
export function makeDevice() {
  byId("screen").onclick = touchScreen;
  setButtons(byId("events"), kEvents.map(([label, event]) => ({ label, press: () => happen(event) })));
  byId("event-names").append(...kNames.map((name) => make("option", { value: name })));
  byId("typing").onsubmit = (event) => {
    event.preventDefault();
    if (byId("text").value) happen(`type ${quoted(byId("text").value)}`);
  };
  byId("dictate").onclick = () => byId("text").value && happen(`dictate ${quoted(byId("text").value)}`);
  byId("any").onsubmit = async (event) => {
    event.preventDefault();
    if (await happen(byId("event").value)) byId("event").value = "";
  };
  return { screen: showScreen, controls: showControls, offers: showOffers, extensionControls: showExtension };
}
