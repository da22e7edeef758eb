// The page: records come in, wishes go out. How the app is decides what can be done.

import { confirmed } from "./confirm.js";
import { makeDevice } from "./device.js";
import { byId } from "./dom.js";
import { follow } from "./feed.js";
import { showFiles } from "./files.js";
import { makeLog } from "./log.js";
import { makePolicies } from "./policies.js";
import { happen, quit, relaunch } from "./send.js";
import { makeTabs } from "./tabs.js";

const kLife = {
  didBecomeActive: "active", willResignActive: "inactive", didEnterBackground: "in the background",
  willEnterForeground: "inactive",
};

let status = { state: "starting" };
let life = "";
let connection = "broken";

/** The app can be used; it is over; the console is. */
function stateNow() {
  if (status.state === "over") return "over";
  if (connection === "gone") return "gone";
  return status.state === "ended" && status.status !== 0 ? "failed" : status.state;
}

const kPills = { starting: "starting", ended: "ended", failed: "failed", over: "console ended", gone: "no connection" };

function banner(state) {
  if (state === "over") return `The console has ended. ${status.sentence}.`;
  if (state === "gone") return "The console does not answer any more: it has ended, or its machine is out of reach.";
  if (state === "ended" || state === "failed") return `${status.sentence}.`;
  return "";
}

function show() {
  const state = stateNow();
  document.body.dataset.state = state;
  byId("state").textContent = connection === "broken" ? "connecting" : (kPills[state] ?? (life || "running"));
  byId("state").dataset.state = state;
  byId("banner").hidden = !banner(state);
  byId("banner").dataset.state = state;
  byId("banner-text").textContent = banner(state);
  byId("banner-retry").hidden = state !== "gone";
  const canRelaunch = state === "ended" || state === "failed";
  byId("relaunch").hidden = byId("banner-relaunch").hidden = !canRelaunch;
  byId("quit").disabled = state === "over" || state === "gone";
  for (const part of document.querySelectorAll(".needs-app")) part.disabled = state !== "running";
  byId("device").inert = state === "over" || state === "gone";
}

function showStatus(record) {
  status = record;
  if (record.state === "starting") life = "";
  document.title = `${record.app} – device console`;
  byId("app").textContent = record.version ? `${record.app} ${record.version}` : record.app;
  byId("about").textContent = [record.identifier, record.idiom === "pad" ? "tablet" : "phone",
    `system ${record.systemVersion}`, record.library ? "" : "without the sandbox",
    record.launch > 1 ? `launch ${record.launch}` : ""].filter(Boolean).join(" · ");
  show();
}

const addToLog = makeLog();
const states = {
  ...makeDevice(),
  policies: makePolicies(),
  files: (record) => showFiles(record, status.defaultProtection ?? "NSFileProtectionNone"),
  status: showStatus,
};

const retry = follow((record) => {
  const showState = states[record.kind];
  if (showState) {
    showState(record);
    return;
  }
  addToLog(record);
  if (record.kind === "lifecycle" && kLife[record.event]) {
    life = kLife[record.event];
    show();
  }
}, (now) => {
  connection = now;
  show();
});

makeTabs(document.querySelector("[role=tablist]"));
byId("terminate").onclick = () => happen("terminate");
byId("relaunch").onclick = byId("banner-relaunch").onclick = () => relaunch();
byId("banner-retry").onclick = () => retry();
byId("quit").onclick = async () => {
  if (await confirmed("End the console?", "The app is ended as well, and this page shows nothing new.", "End")) quit();
};
show();
