// A question that is answered before something is done that cannot be undone.

import { byId } from "./dom.js";

export function confirmed(heading, text, yes) {
  const dialog = byId("confirm");
  byId("confirm-heading").textContent = heading;
  byId("confirm-text").textContent = text;
  byId("confirm-yes").textContent = yes;
  dialog.returnValue = "no";
  dialog.showModal();
  return new Promise((resolve) => {
    dialog.onclose = () => resolve(dialog.returnValue === "yes");
  });
}
