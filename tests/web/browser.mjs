// A browser for the tests of the pages: Chromium as Debian has it, driven by Playwright.

import { createRequire } from "node:module";

// The packages lie in the build's folder, where scripts/web-setup.sh puts them.
const require = createRequire(new URL("../../build/web/", import.meta.url));
const { chromium } = require("playwright-core");

const kFlags = ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
  "--disable-component-update", "--disable-sync"];

export const openBrowser = () => chromium.launch({
  executablePath: process.env.QV_CHROMIUM ?? "/usr/bin/chromium", headless: true, args: kFlags,
});

/**
 * Opens a page of its own, with the errors that it meets: {page, errors}. `options` are Playwright's of a context:
 * viewport, colorScheme.
 */
export async function openPage(browser, address, options = {}) {
  const context = await browser.newContext({ viewport: { width: 1400, height: 900 }, ...options });
  const page = await context.newPage();
  const errors = [];
  page.on("pageerror", (error) => errors.push(String(error)));
  page.on("console", (message) => {
    if (message.type() === "error") errors.push(message.text());
  });
  await page.goto(address);
  return { page, errors };
}

/** Whether the page is wider than its window. */
export const scrollsSideways = (page) => page.evaluate(
  () => document.documentElement.scrollWidth > document.documentElement.clientWidth);
