// Elements, found and made.

export const byId = (id) => document.getElementById(id);

/** An element with properties and children; a child that is no node becomes text. */
export function make(tag, properties = {}, ...children) {
  const { data, ...rest } = properties;
  const element = Object.assign(document.createElement(tag), rest);
  Object.assign(element.dataset, data);
  element.append(...children);
  return element;
}

/**
 * Puts `wanted` buttons, as {label, disabled, press}, in the place of those that are there. Those that stay the same
 * stay themselves, so that whoever is on one of them with the keyboard is not thrown out.
 */
export function setButtons(container, wanted) {
  const same = container.children.length === wanted.length &&
    wanted.every(({ label }, index) => container.children[index].textContent === label);
  if (!same) {
    container.replaceChildren(...wanted.map(({ label }) => make("button", { type: "button" }, label)));
  }
  wanted.forEach(({ disabled, press }, index) => {
    container.children[index].disabled = Boolean(disabled);
    container.children[index].onclick = press;
  });
}
