// Tabs: one is chosen with the mouse, or with the arrows of the keyboard.

export function makeTabs(list) {
  const tabs = [...list.querySelectorAll("[role=tab]")];
  const choose = (chosen) => {
    for (const tab of tabs) {
      tab.setAttribute("aria-selected", String(tab === chosen));
      tab.tabIndex = tab === chosen ? 0 : -1;
      const panel = document.getElementById(tab.getAttribute("aria-controls"));
      panel.hidden = tab !== chosen;
      const rows = panel.querySelector("ol");
      if (rows) rows.scrollTop = rows.scrollHeight;
    }
  };
  for (const tab of tabs) tab.onclick = () => choose(tab);
  list.onkeydown = (event) => {
    const step = { ArrowRight: 1, ArrowLeft: -1 }[event.key];
    if (!step) return;
    const next = tabs[(tabs.indexOf(document.activeElement) + step + tabs.length) % tabs.length];
    choose(next);
    next.focus();
  };
}
