// The records of the running device. A connection that breaks is made again a few times, and continues where it broke
// off; then the console counts as gone, until somebody tries again.

const kTries = 5;
const kFirstPause = 300;

/** Calls `take` with each record and `tell` with "open", "broken" or "gone". Answers what tries again. */
export function follow(take, tell) {
  let last = 0;
  let failures = 0;
  let over = false;

  const connect = () => {
    const source = new EventSource(`records?after=${last}`);
    source.onopen = () => {
      failures = 0;
      tell("open");
    };
    source.onmessage = (message) => {
      last = Number(message.lastEventId);
      const record = JSON.parse(message.data);
      over = over || (record.kind === "status" && record.state === "over");
      take(record);
    };
    source.onerror = () => {
      // The browser's own way would try for ever.
      source.close();
      if (over) return;
      failures += 1;
      if (failures > kTries) {
        tell("gone");
        return;
      }
      tell("broken");
      setTimeout(connect, kFirstPause * 2 ** failures);
    };
  };

  connect();
  return () => {
    failures = 0;
    connect();
  };
}
