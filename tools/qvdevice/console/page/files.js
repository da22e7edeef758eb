// The app's container, with the protection class of each item.

import { byId, make } from "./dom.js";
import { protectionInWords } from "./words.js";

/** Shows a record of the files; an item without a class has the device's own. */
export function showFiles({ items, more }, byDefault) {
  const total = items.length + more;
  byId("files-count").textContent = total === 0 ? "The container is empty." :
    `${total} ${total === 1 ? "item" : "items"}${more ? `, of which the first ${items.length} are shown` : ""}`;
  byId("files").replaceChildren(...items.map(({ path, protection }) => make("li", {},
    make("span", { className: "said" }, path),
    make("span", { className: "class", data: { class: protection || byDefault } },
      protection ? protectionInWords(protection) : `${protectionInWords(byDefault)} (default)`))));
}
