// The report of a whole day in a real browser: by itself, at every width, light and dark, on paper.

import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { mkdtempSync, readdirSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { fileURLToPath, pathToFileURL } from "node:url";

import { openBrowser, openPage, scrollsSideways } from "./browser.mjs";
import { kProgram } from "./console.mjs";

const kDay = fileURLToPath(new URL("../../apps/day.scenario", import.meta.url));
let browser;
let folder;
let address;

before(async () => {
  folder = mkdtempSync(join(tmpdir(), "qvdevice-test."));
  const report = join(folder, "report");
  const { status, stderr } = spawnSync(kProgram, ["play", kDay, "--report", report], { encoding: "utf8" });
  assert.equal(status, 0, stderr);
  assert.deepEqual(readdirSync(report), ["index.html"]);
  address = pathToFileURL(join(report, "index.html")).href;
  browser = await openBrowser();
});
after(async () => {
  await browser?.close();
  rmSync(folder, { recursive: true, force: true });
});

/** The report in a page of its own, which goes with the test. */
async function open(t, options) {
  const opened = await openPage(browser, address, options);
  t.after(() => opened.page.context().close());
  return opened;
}

test("needs nothing but its one file", async (t) => {
  const context = await browser.newContext();
  t.after(() => context.close());
  const page = await context.newPage();
  const asked = [];
  page.on("request", (request) => asked.push(request.url()));
  await page.goto(address);
  assert.deepEqual(asked.filter((url) => url !== address && !url.startsWith("data:")), []);
  assert.equal(await page.locator("script").count(), 0);
});

test("shows pictures that all can be drawn, and says what each is of", async (t) => {
  const { page, errors } = await open(t);
  const pictures = await page.locator("img").evaluateAll((all) => Promise.all(all.map(async (image) => {
    await image.decode();
    return { width: image.naturalWidth, height: image.naturalHeight, words: image.alt };
  })));
  assert.ok(pictures.length >= 10, `${pictures.length} pictures`);
  for (const { width, height, words } of pictures) {
    assert.ok(width > 300 && height > 600, `${width} x ${height}`);
    assert.notEqual(words, "");
  }
  assert.deepEqual(errors, []);
});

test("tells the decisions with the policies behind them, and how the day ended", async (t) => {
  const { page } = await open(t);
  assert.equal(await page.getByRole("heading", { level: 1 }).textContent(), "A day of a managed phone");
  await page.getByText("The scenario was played to its end", { exact: false }).first().waitFor();
  for (const decision of ["allowsPrinting: no (printPolicy 0)", "allowsPrinting: yes (printPolicy 1)",
    "allowsPasteboard: no (pasteboardPolicy 0)", "-[UICalloutBar targetForAction:]", "You have left us."]) {
    await page.getByText(decision, { exact: false }).first().waitFor();
  }
});

test("has contents that lead to every chapter", async (t) => {
  const { page } = await open(t);
  const targets = await page.locator("nav a").evaluateAll((links) => links.map((link) => link.getAttribute("href")));
  assert.ok(targets.length >= 10, `${targets.length} links`);
  for (const target of targets) assert.equal(await page.locator(target).count(), 1, target);
});

for (const [name, width] of [["a phone", 360], ["a tablet", 800], ["a desktop", 1400]]) {
  for (const colorScheme of ["light", "dark"]) {
    test(`fits ${name}'s window, ${colorScheme}`, async (t) => {
      const { page } = await open(t, { viewport: { width, height: 900 }, colorScheme });
      assert.equal(await scrollsSideways(page), false);
      await page.locator("details").evaluateAll((all) => {
        for (const folded of all) folded.open = true;
      });
      assert.equal(await scrollsSideways(page), false, "with all that is folded open");
    });
  }
}

/** How light a colour is that a browser has computed, from 0 to 1. */
const lightness = (colour) => {
  const [r, g, b] = colour.match(/[\d.]+/g).map(Number);
  return (0.2126 * r + 0.7152 * g + 0.0722 * b) / 255;
};

test("is dark on light where light is liked, and light on dark where dark is", async (t) => {
  for (const [colorScheme, ground] of [["light", (l) => l > 0.9], ["dark", (l) => l < 0.2]]) {
    const { page } = await open(t, { colorScheme });
    const [background, ink] = await page.evaluate(() => {
      const style = getComputedStyle(document.body);
      return [style.backgroundColor, style.color];
    });
    assert.ok(ground(lightness(background)), `${colorScheme}: ${background}`);
    assert.ok(Math.abs(lightness(background) - lightness(ink)) > 0.6, `${colorScheme}: ${ink} on ${background}`);
  }
});

test("leaves out on paper what only leads about, and shows what is folded", async (t) => {
  const { page } = await open(t, { colorScheme: "dark" });
  const line = page.locator("details.log tr").first();
  await page.emulateMedia({ media: "screen" });
  assert.equal(await line.isVisible(), false);
  await page.emulateMedia({ media: "print" });
  assert.equal(await page.locator("nav").isVisible(), false);
  assert.equal(await line.isVisible(), true);
  const ground = await page.evaluate(() => getComputedStyle(document.body).backgroundColor);
  assert.ok(lightness(ground) > 0.95, ground);
  assert.ok((await page.pdf({ format: "A4" })).length > 10000);
});
