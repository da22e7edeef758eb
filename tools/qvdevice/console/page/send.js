// What is wanted of the device, and what becomes of it, in one line at the foot of the page.

import { byId } from "./dom.js";

const kSlow = 1000;

function tell(text, kind) {
  const result = byId("result");
  result.textContent = text;
  result.dataset.kind = kind;
}

async function post(path, body) {
  let response;
  try {
    response = await fetch(path, {
      method: "POST",
      headers: { "Content-Type": "application/json" },
      body: JSON.stringify(body),
    });
  } catch {
    return { error: "the console does not answer" };
  }
  return response.json().catch(() => ({ error: `the console answered with status ${response.status}` }));
}

async function want(path, body, what) {
  const slow = setTimeout(() => tell(`${what}: waiting for the app to answer …`, "waiting"), kSlow);
  const { error } = await post(path, body);
  clearTimeout(slow);
  if (error) {
    tell(`${what}: ${error}`, "refused");
  } else {
    tell(`${what}: done`, "done");
  }
  return !error;
}

/** Lets an event happen, a line as in an events file; whether it did. */
export const happen = (event) => want("events", { event }, event);
export const relaunch = () => want("relaunch", {}, "relaunch");
export const quit = () => want("quit", {}, "end the console");

/** A text as an event's argument: in quotes, whatever it holds. */
export const quoted = (text) => JSON.stringify(text);
