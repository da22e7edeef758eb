// The administrator's policies: each value as a choice that is sent when it is made. What is shown is what the SDK
// answers, also when a value was changed elsewhere or refused.

import { byId, make } from "./dom.js";
import { confirmed } from "./confirm.js";
import { happen, quoted } from "./send.js";

const kChoices = {
  ready: ["SDK ready", [[false, "No"], [true, "Yes"]]],
  authState: ["Authorisation", [[0, "Unauthorised"], [1, "Authorised"], [2, "Retired"]]],
  pasteboardPolicy: ["Copy and paste", [[0, "Not allowed"], [1, "Allowed"], [2, "Secure copy"]]],
  openInPolicy: ["Open in", [[0, "Not allowed"], [1, "Allowed"], [2, "Whitelist"]]],
  printPolicy: ["Printing", [[0, "Not allowed"], [1, "Allowed"]]],
  managedPolicy: ["Managed", [[0, "No"], [2, "Yes"]]],
  readyToTerminate: ["Ready to terminate", [[false, "No"], [true, "Yes"]]],
  checkInRequested: ["Check-in requested", [[false, "No"], [true, "Yes"]]],
};

let known = {};

function show(values) {
  known = values;
  for (const [key, [, options]] of Object.entries(kChoices)) {
    for (const [value] of options) {
      byId(`${key}-${value}`).checked = values[key] === value;
    }
    const odd = byId(`${key}-odd`);
    odd.hidden = options.some(([value]) => value === values[key]) || values[key] === undefined;
    odd.textContent = `now ${values[key]}`;
  }
  showText("openInWhitelist", (values.openInWhitelist ?? []).join(", "));
  showText("config", values.config ? JSON.stringify(values.config, null, 2) : "{}");
}

/** What somebody is writing is theirs until they have sent it. */
function showText(key, text) {
  const field = byId(key);
  if (field.value === (field.dataset.shown ?? "")) field.value = text;
  field.dataset.shown = text;
}

async function send(key, value) {
  const message = byId("message").value;
  const withMessage = key === "authState" && message ? ` ${quoted(message)}` : "";
  if (!(await happen(`set ${key} ${JSON.stringify(value)}${withMessage}`))) show(known);
}

async function choose(key, value) {
  if (key === "authState" && value === 2) {
    await retire();
  } else {
    await send(key, value);
  }
}

export async function retire() {
  const yes = await confirmed("Retire the app?",
    "It is told that it has been withdrawn from this device: it wipes what it has stored here, and ends.", "Retire");
  if (yes) {
    await send("authState", 2);
  } else {
    show(known);
  }
}

function choice(key, label, options) {
  const radios = options.map(([value, text]) => {
    const radio = make("input", { type: "radio", name: key, id: `${key}-${value}` });
    radio.onchange = () => choose(key, value);
    return make("label", {}, radio, make("span", {}, text));
  });
  return make("fieldset", { className: "choice" }, make("legend", { title: key }, label),
    make("div", { className: "segments" }, ...radios),
    make("span", { id: `${key}-odd`, className: "muted", hidden: true }));
}

function textForm(id, label, field, submit) {
  field.id = id;
  field.autocomplete = "off";
  field.spellcheck = false;
  const form = make("form", { className: "text" }, make("label", { htmlFor: id }, label),
    make("div", { className: "row" }, field, make("button", {}, "Set")));
  form.onsubmit = (event) => {
    event.preventDefault();
    submit(field.value);
  };
  return form;
}

async function sendText(key, event) {
  const sent = byId(key).value;
  if (await happen(event)) {
    // From now on it shows what the SDK has.
    if (byId(key).value === sent) byId(key).dataset.shown = sent;
  }
}

/** Makes the controls; `policies` records go to what it answers. */
export function makePolicies() {
  const message = make("input", { id: "message", type: "text", autocomplete: "off" });
  const messageRow = make("div", { className: "text" },
    make("label", { htmlFor: "message" }, "Message to the user with the next authorisation"), message);
  const rows = Object.entries(kChoices).map(([key, [label, options]]) => choice(key, label, options));
  rows.splice(2, 0, messageRow);
  rows.push(
    textForm("openInWhitelist", "Open-in whitelist (app identifiers, with commas)", make("input", { type: "text" }),
      (text) => {
        const entries = text.split(/[\s,]+/).filter(Boolean);
        return sendText("openInWhitelist", `set openInWhitelist ${JSON.stringify(entries)}`);
      }),
    textForm("config", "Configuration (JSON)", make("textarea", { rows: 3, className: "code" }),
      // An event is one line; in JSON a line break is a blank.
      (text) => sendText("config", `set config ${text.replaceAll(/\s*\n\s*/g, " ")}`)));
  byId("policies").append(...rows);
  return show;
}
