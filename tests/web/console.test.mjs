// The console's page in a real browser: what it shows of an app, what it lets one do, and what becomes of it when the app
// or the console ends.

import assert from "node:assert/strict";
import { request } from "node:http";
import { after, before, test } from "node:test";
import { fileURLToPath } from "node:url";

import { openBrowser, openPage, scrollsSideways } from "./browser.mjs";
import { appThatLeaves, endConsole, runConsole, startConsole, workFolder } from "./console.mjs";

let browser;
before(async () => {
  browser = await openBrowser();
});
after(() => browser.close());

/** A console and a page on it, which both go with the test. */
async function open(t, options = [], pageOptions = {}) {
  const console_ = await startConsole(...options);
  t.after(() => endConsole(console_));
  const opened = await openPage(browser, console_.address, pageOptions);
  t.after(() => opened.page.context().close());
  await state(opened.page, "running");
  return { console_, ...opened };
}

const state = (page, wanted) => page.waitForSelector(`body[data-state="${wanted}"]`, { timeout: 30000 });
const button = (page, name) => page.getByRole("button", { name, exact: true });
const choose = (page, group, value) => page.getByRole("group", { name: group, exact: true }).getByText(value, { exact: true })
  .click();
const result = (page, text) => page.locator("#result").getByText(text, { exact: false }).waitFor();
const inLog = (page, text) => page.locator("#log").getByText(text, { exact: false }).first().waitFor();

/** An answer's status and text; `headers` take the place of a browser's. */
function fetchRaw(address, { method = "GET", headers = {}, body } = {}) {
  return new Promise((resolve, reject) => {
    const asked = request(address, { method, headers }, (answer) => {
      let text = "";
      answer.on("data", (data) => { text += data; });
      answer.on("end", () => resolve({ status: answer.statusCode, text, headers: answer.headers }));
    });
    asked.on("error", reject);
    asked.end(body);
  });
}

test("shows the app that runs, its buttons, log, files and what the SDK was told", async (t) => {
  const { page, errors } = await open(t);
  assert.equal(await page.title(), "Notes – device console");
  await button(page, "Share").waitFor();
  await inLog(page, "Showing 3 notes.");
  await page.getByRole("tab", { name: "Told to the SDK" }).click();
  await page.locator("#calls").getByText("startWithLaunchOptions:").waitFor();
  await page.getByRole("tab", { name: "Files" }).click();
  const file = page.locator("#files li", { hasText: "Documents/diary.private" });
  assert.equal(await file.locator(".class").textContent(), "complete");
  assert.deepEqual(errors, []);
});

test("shows a picture of the screen that changes with it, and a click touches the screen", async (t) => {
  const { page } = await open(t);
  const picture = page.locator("#screen");
  await picture.waitFor();
  assert.ok(await picture.evaluate((image) => image.decode().then(() => image.naturalWidth > 300)));
  const first = await picture.getAttribute("src");
  await button(page, "Share").click();
  await page.waitForFunction((src) => document.getElementById("screen").getAttribute("src") !== src, first);
  const box = await picture.boundingBox();
  await picture.click({ position: { x: box.width / 2, y: box.height / 4 } });
  await result(page, "touch ");
});

test("needs the token", async (t) => {
  const { console_ } = await open(t);
  const { origin } = new URL(console_.address);
  const page = await browser.newPage();
  for (const path of ["/", "/00000000000000000000000000000000/", "/index.html"]) {
    const answer = await page.goto(origin + path);
    assert.equal(answer.status(), 404, path);
  }
  await page.close();
});

test("refuses another host's name and another site's page", async (t) => {
  const { console_ } = await open(t);
  const { origin } = new URL(console_.address);
  assert.equal((await fetchRaw(console_.address, { headers: { Host: "evil.example" } })).status, 403);
  const wish = { method: "POST", body: '{"event":"terminate"}' };
  const json = { "Content-Type": "application/json" };
  const events = `${console_.address}events`;
  assert.equal((await fetchRaw(events, { ...wish, headers: { ...json, Origin: "http://evil.example" } })).status, 403);
  assert.equal((await fetchRaw(events, { ...wish, headers: json })).status, 403);
  assert.equal((await fetchRaw(events, { ...wish, headers: { Origin: origin } })).status, 415);
});

test("lets no other site's page speak to it, even one that knows the address", async (t) => {
  const { console_, page } = await open(t);
  const stranger = await startConsole();
  t.after(() => endConsole(stranger));
  const other = await openPage(browser, stranger.address);
  t.after(() => other.page.context().close());
  const outcome = await other.page.evaluate((address) => fetch(`${address}events`, {
    method: "POST", mode: "no-cors", body: '{"event":"terminate"}',
  }).then(() => "sent", () => "stopped"), console_.address);
  assert.equal(outcome, "stopped");
  assert.equal(await page.locator("body").getAttribute("data-state"), "running");
});

test("a policy that is changed is seen in the log and stays chosen", async (t) => {
  const { page } = await open(t);
  await choose(page, "Printing", "Allowed");
  await result(page, "set printPolicy 1: done");
  await inLog(page, "print");
  await page.waitForFunction(() => document.getElementById("printPolicy-1").checked);
});

test("copy is refused while it is not allowed, and done when it is", async (t) => {
  const { page } = await open(t);
  await choose(page, "SDK ready", "Yes");
  await choose(page, "Authorisation", "Authorised");
  await button(page, "Edit").click();
  await button(page, "Edit menu").click();
  await page.locator("#offer-buttons").getByText("Capitals").waitFor();
  assert.equal(await page.locator("#offer-buttons").getByText("Copy", { exact: true }).count(), 0);
  await choose(page, "Copy and paste", "Allowed");
  await result(page, "set pasteboardPolicy 1: done");
  await button(page, "Edit menu").click();
  await page.locator("#offer-buttons").getByText("Copy", { exact: true }).click();
  await result(page, 'choose "Copy": done');
});

test("shows the decisions that were asked for", async (t) => {
  const { page } = await open(t);
  await button(page, "Print").click();
  await page.getByRole("tab", { name: "Decisions" }).click();
  const decision = page.locator("#decisions li", { hasText: "allowsPrinting" }).first();
  await decision.waitFor();
  assert.equal(await decision.locator(".answer").textContent(), "no");
});

test("the app goes to the background, where nothing can be pressed, and comes back", async (t) => {
  const { page } = await open(t);
  await page.locator("#state").getByText("active").waitFor();
  await button(page, "Background").click();
  await page.locator("#state").getByText("in the background").waitFor();
  await page.locator("#unusable").getByText("the app is in the background").waitFor();
  await button(page, "Share").click();
  await result(page, "the app is in the background");
  await button(page, "Foreground").click();
  await button(page, "Activate").click();
  await page.locator("#state").getByText("active", { exact: true }).waitFor();
});

test("an event that is mistyped is answered with the nearest one", async (t) => {
  const { page } = await open(t);
  await page.getByLabel("An event", { exact: true }).fill("tpa Share");
  await button(page, "Do it").click();
  await result(page, 'column 1: there is no event "tpa"; did you mean "tap"?');
});

test("a configuration that is no JSON is refused with the place, and stays to be mended", async (t) => {
  const { page } = await open(t);
  const config = page.getByLabel("Configuration (JSON)");
  const form = page.locator("form", { has: config });
  await config.fill('{\n  "server": \n}');
  await form.getByRole("button", { name: "Set" }).click();
  await result(page, "not JSON");
  assert.equal(await config.inputValue(), '{\n  "server": \n}');
  await config.fill('{\n  "server": "one.example.com"\n}');
  await form.getByRole("button", { name: "Set" }).click();
  await result(page, "done");
});

test("retiring asks first, and then shows that the app has ended and lost its files", async (t) => {
  const { page } = await open(t);
  await choose(page, "SDK ready", "Yes");
  await choose(page, "Authorisation", "Retired");
  await page.getByRole("dialog").getByRole("button", { name: "Cancel" }).click();
  await page.waitForFunction(() => !document.getElementById("authState-2").checked);
  assert.equal(await page.locator("body").getAttribute("data-state"), "running");
  await choose(page, "Authorisation", "Retired");
  await page.getByRole("dialog").getByRole("button", { name: "Retire" }).click();
  await state(page, "ended");
  await page.getByRole("alert").getByText("ended by itself in good order").waitFor();
  assert.ok(await page.locator("#ready-true").isDisabled());
  await page.getByRole("tab", { name: "Files" }).click();
  await page.locator("#files-count").getByText("The container is empty.").waitFor();
});

test("an app that was terminated is started again", async (t) => {
  const { page } = await open(t);
  await button(page, "Terminate").click();
  await state(page, "ended");
  await page.getByRole("alert").getByRole("button", { name: "Relaunch" }).click();
  await state(page, "running");
  assert.ok(await page.getByRole("alert").isHidden());
  await page.locator("#about").getByText("launch 2").waitFor();
  await button(page, "Share").click();
  await result(page, 'tap "Share": done');
});

test("a crash is shown as one, nothing can be pressed, and the console ends with its status", async (t) => {
  const app = appThatLeaves(t, "signal(SIGSEGV, SIG_DFL); raise(SIGSEGV);");
  const { page, console_ } = await open(t, [app]);
  await button(page, "Background").click();
  await state(page, "failed");
  await page.getByRole("alert").getByText("Leaving crashed by signal 11 (Segmentation fault).").waitFor();
  assert.ok(await button(page, "Background").isDisabled());
  assert.ok(await button(page, "Terminate").isDisabled());
  assert.equal(await endConsole(console_), 1);
});

test("an app that hangs is waited for in sight, and then shown as ended", async (t) => {
  const app = appThatLeaves(t, "for (;;) pause();");
  const { page } = await open(t, ["--timeout", "3", app]);
  await button(page, "Background").click();
  await result(page, "waiting for the app to answer");
  await state(page, "failed");
  await page.getByRole("alert").getByText("gave no answer in 3 seconds and was ended").waitFor();
});

test("the passcode extension shows its keys, and a code that is typed on them is taken", async (t) => {
  const policies = fileURLToPath(new URL("../../apps/Manager/authenticate.json", import.meta.url));
  const { page } = await open(t, ["--system-version", "12.4", "--policies", policies]);
  await button(page, "Authenticate").click();
  const keys = page.locator("#extension-buttons");
  for (const key of ["2", "5", "8", "0", "OK"]) {
    await keys.getByRole("button", { name: key, exact: true }).click();
    await result(page, `extension tap "${key}": done`);
  }
  await keys.waitFor({ state: "hidden" });
});

test("two pages see the same, also one that is opened late", async (t) => {
  const { page, console_ } = await open(t);
  await button(page, "Edit").click();
  const late = await openPage(browser, console_.address);
  t.after(() => late.page.context().close());
  await state(late.page, "running");
  await inLog(late.page, "Showing 3 notes.");
  await button(late.page, "Share").waitFor();
  await choose(late.page, "Printing", "Allowed");
  await page.waitForFunction(() => document.getElementById("printPolicy-1").checked);
  await button(late.page, "Terminate").click();
  await state(page, "ended");
});

test("a page that is left open says that the console has ended, and asks nobody any more", async (t) => {
  const { page, console_ } = await open(t);
  assert.equal(await endConsole(console_), 0);
  await state(page, "over");
  await page.getByRole("alert").getByText("The console has ended. Notes was told to end and did").waitFor();
  assert.ok(await button(page, "End console").isDisabled());
  const asked = [];
  page.on("request", (each) => asked.push(each.url()));
  await page.waitForTimeout(2000);
  assert.deepEqual(asked, []);
});

test("a page whose console is killed says so, and stops asking until somebody tries again", async (t) => {
  const { page, console_ } = await open(t);
  console_.child.kill("SIGKILL");
  await state(page, "gone");
  await page.getByRole("alert").getByText("The console does not answer any more").waitFor();
  const asked = [];
  page.on("request", (each) => asked.push(each.url()));
  await page.waitForTimeout(3000);
  assert.deepEqual(asked, []);
  await button(page, "Try again").click();
  await page.waitForTimeout(500);
  assert.ok(asked.length > 0);
});

test("the page ends the console, after a question", async (t) => {
  const { page, console_ } = await open(t);
  await button(page, "End console").click();
  await page.getByRole("dialog").getByRole("button", { name: "End", exact: true }).click();
  await state(page, "over");
  assert.equal(await console_.ended, 0);
});

test("a second console on the same device is refused, and the first goes on", async (t) => {
  const device = `${workFolder(t)}/device`;
  const { page } = await open(t, ["--device", device]);
  const { status, error } = runConsole("--device", device);
  assert.equal(status, 69);
  assert.match(error, /^qvdevice: there is a console already for the device .*; end that one first, or name another folder\n$/);
  await button(page, "Edit").click();
  await result(page, 'tap "Edit": done');
});

test("what the app says is shown as text, whatever it is", async (t) => {
  const app = appThatLeaves(t, 'NSLog(@"<img src=x onerror=alert(1)><script>alert(2)</script>");');
  const { page, errors } = await open(t, [app]);
  await button(page, "Background").click();
  await inLog(page, "<img src=x onerror=alert(1)><script>alert(2)</script>");
  assert.equal(await page.locator("#log img, #log script").count(), 0);
  assert.deepEqual(errors, []);
});

for (const width of [320, 375, 768, 1024, 1400]) {
  test(`a window of ${width} points needs no scrolling sideways`, async (t) => {
    const { page } = await open(t, [], { viewport: { width, height: 800 } });
    await button(page, "Share").click();
    for (const tab of ["Decisions", "Told to the SDK", "Files", "Log"]) {
      await page.getByRole("tab", { name: tab }).click();
      assert.ok(!(await scrollsSideways(page)), tab);
    }
  });
}

test("is dark where the user has it dark, with the text readable on it", async (t) => {
  const { page } = await open(t, [], { colorScheme: "dark" });
  const light = (name) => page.evaluate((property) => {
    const [r, g, b] = getComputedStyle(document.body)[property].match(/\d+/g).map(Number);
    return (r * 0.2126 + g * 0.7152 + b * 0.0722) / 255;
  }, name);
  assert.ok(await light("backgroundColor") < 0.15);
  assert.ok(await light("color") > 0.8);
  await page.emulateMedia({ colorScheme: "light" });
  assert.ok(await light("backgroundColor") > 0.85);
  assert.ok(await light("color") < 0.2);
});

test("can be used with the keyboard alone", async (t) => {
  const { page } = await open(t);
  await button(page, "Share").focus();
  await page.keyboard.press("Enter");
  await result(page, 'tap "Share": done');
  await page.locator("#printPolicy-0").focus();
  await page.keyboard.press("ArrowRight");
  await result(page, "set printPolicy 1: done");
  await page.getByRole("tab", { name: "Log" }).focus();
  await page.keyboard.press("ArrowRight");
  await page.locator("#decisions-panel").waitFor();
  assert.equal(await page.evaluate(() => document.activeElement.id), "tab-decisions");
});
