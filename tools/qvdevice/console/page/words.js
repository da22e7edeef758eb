// Records in words: {tag, text, level, kind}. The level is that of the log, with which the rest goes along.

const inShort = (value) => (typeof value === "string" ? value : JSON.stringify(value));

const kClasses = {
  NSFileProtectionNone: "none",
  NSFileProtectionComplete: "complete",
  NSFileProtectionCompleteUnlessOpen: "unless open",
  NSFileProtectionCompleteUntilFirstUserAuthentication: "until first unlock",
};

export const protectionInWords = (name) => kClasses[name] ?? name;

const rest = ({ kind, t, event, ...others }) => Object.entries(others)
  .map(([key, value]) => `${key} ${inShort(value)}`).join(", ");

export function decisionInWords({ asked, question, argument, read = {}, answer }) {
  const about = argument === undefined ? "" : ` (${inShort(argument)})`;
  const because = Object.entries(read).map(([key, value]) => `${key} ${inShort(value)}`).join(", ");
  const said = answer === true ? "yes" : answer === false ? "no" : inShort(answer);
  return { who: asked ?? "the library itself", what: `${question}${about}`, said, because };
}

export function callInWords({ call, kind, t, ...others }) {
  const details = Object.entries(others).filter(([, value]) => value !== null)
    .map(([key, value]) => `${key} ${inShort(value)}`).join(", ");
  return details ? `${call}  ${details}` : call;
}

const kWords = {
  log: ({ level, text }) => ({ tag: `log ${level}`, text, level }),
  output: ({ text }) => ({ tag: "app", text: text.replace(/^\d{4}-\d\d-\d\d \S+ \S+\[[^\]]*\] /, ""), level: 2 }),
  lifecycle: ({ event }) => ({ tag: "lifecycle", text: event, level: 2 }),
  sdk: (record) => ({ tag: "sdk", text: callInWords(record), level: record.call === "sendEvent:" ? 5 : 3 }),
  protection: ({ path, from, to }) => ({
    tag: "protection", text: `${path}: ${from ? protectionInWords(from) : "no class"} → ${protectionInWords(to)}`,
    level: 3,
  }),
  event: ({ kind, event, line, ...others }) => ({ tag: "event", text: `${event} ${rest(others)}`.trim(), level: 0 }),
  decision: (record) => {
    const { who, what, said, because } = decisionInWords(record);
    return { tag: "decision", text: `${who} asks ${what}: ${said}${because && ` (${because})`}`, level: 2 };
  },
  missed: ({ records }) => ({
    tag: "console", text: `${records ?? "Some"} older records are not kept any more.`, level: 0,
  }),
  item: () => null,
  hook: () => null,
  coverage: () => null,
  end: ({ sentence }) => ({ tag: "end", text: `${sentence}.`, level: 0 }),
  begin: ({ app, systemVersion }) => ({ tag: "launch", text: `${app} on system ${systemVersion}`, level: 0 }),
};

/** Nothing for a record that is not shown in the log. */
export function inWords(record) {
  const words = kWords[record.kind] ?? (() => ({ tag: record.kind, text: `${record.event ?? ""} ${rest(record)}`, level: 3 }));
  const said = words(record);
  return said && { ...said, kind: record.kind };
}
