// The live log, the decisions, and what the SDK was told: lists that grow at their end and keep the newest.

import { byId, make } from "./dom.js";
import { callInWords, decisionInWords, inWords } from "./words.js";

const kMostRows = 2000;
const kMostOthers = 500;

/** Whoever reads further up is not taken to the end. */
function append(list, row, most) {
  const following = list.scrollHeight - list.scrollTop - list.clientHeight < 40;
  list.append(row);
  while (list.children.length > most) list.firstElementChild.remove();
  if (following) list.scrollTop = list.scrollHeight;
}

const time = ({ t }) => make("time", {}, t === undefined ? "" : (t / 1000).toFixed(3));

function isShown(row) {
  const wanted = byId("search").value.toLowerCase();
  return Number(row.dataset.level) <= Number(byId("level").value) &&
    (!wanted || row.textContent.toLowerCase().includes(wanted));
}

function addToLog(record) {
  const words = inWords(record);
  if (!words) return;
  const row = make("li", { data: { level: words.level, kind: words.kind } },
    time(record), make("span", { className: "tag" }, words.tag), make("span", { className: "said" }, words.text));
  if (record.kind === "decision") row.dataset.answer = String(record.answer);
  row.hidden = !isShown(row);
  append(byId("log"), row, kMostRows);
}

function addDecision(record) {
  const { who, what, said, because } = decisionInWords(record);
  byId("no-decisions").hidden = true;
  append(byId("decisions"), make("li", { data: { answer: String(record.answer) } }, time(record),
    make("span", { className: "answer" }, said),
    make("span", { className: "said" }, make("b", {}, what), " ", make("code", {}, who),
      make("span", { className: "muted" }, because ? ` because of ${because}` : ""))), kMostOthers);
}

function addCall(record) {
  if (record.call === "sendEvent:") return;
  byId("no-calls").hidden = true;
  append(byId("calls"), make("li", {}, time(record), make("span", { className: "said" }, callInWords(record))),
    kMostOthers);
}

/** Answers what takes each record. */
export function makeLog() {
  const filter = () => {
    for (const row of byId("log").children) row.hidden = !isShown(row);
    byId("log").scrollTop = byId("log").scrollHeight;
  };
  byId("level").onchange = filter;
  byId("search").oninput = filter;
  return (record) => {
    addToLog(record);
    if (record.kind === "decision") addDecision(record);
    if (record.kind === "sdk") addCall(record);
  };
}
