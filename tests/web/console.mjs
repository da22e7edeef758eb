// `qvdevice console` for the tests: started, spoken to, ended.

import { spawn, spawnSync } from "node:child_process";
import { mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { fileURLToPath } from "node:url";

export const kProgram = fileURLToPath(new URL("../../build/linux/bin/qvdevice", import.meta.url));

/** Runs a console until `address` is known: {address, child, ended}, ended being a promise of its exit status. */
export async function startConsole(...options) {
  const child = spawn(kProgram, ["console", "--json", ...options], { stdio: ["ignore", "pipe", "inherit"] });
  const ended = new Promise((resolve) => {
    child.on("exit", (status, signal) => resolve(signal ?? status));
  });
  const address = await new Promise((resolve, reject) => {
    let text = "";
    child.stdout.on("data", (data) => {
      text += data;
      const found = text.match(/"kind":"console","address":"([^"]*)"/);
      if (found) resolve(found[1]);
    });
    ended.then((status) => reject(new Error(`the console ended with ${status}`)));
  });
  return { address, child, ended };
}

/** Ends a console that may have ended already, as Ctrl-C does; its exit status. */
export function endConsole({ child, ended }) {
  child.kill("SIGINT");
  return ended;
}

export const runConsole = (...options) => {
  const { status, stderr } = spawnSync(kProgram, ["console", ...options], { encoding: "utf8" });
  return { status, error: stderr };
};

/** A folder that is removed after the test `t`. */
export function workFolder(t) {
  const folder = mkdtempSync(join(tmpdir(), "qvdevice-test."));
  t.after(() => rmSync(folder, { recursive: true, force: true }));
  return folder;
}

/** An app that does what `leave` says, in Objective-C, when it goes to the background. */
export function appThatLeaves(t, leave) {
  const folder = workFolder(t);
  writeFileSync(join(folder, "main.m"), `
#import <UIKit/UIKit.h>
#include <signal.h>
#include <unistd.h>
@interface Leaving : UIResponder <UIApplicationDelegate>
@end
@implementation Leaving
- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options { return YES; }
- (void)applicationDidEnterBackground:(UIApplication *)application { ${leave} }
@end
int main(int argc, char *argv[]) {
  @autoreleasepool { return UIApplicationMain(argc, argv, nil, @"Leaving"); }
}
`);
  const app = join(folder, "Leaving.app");
  const { status, stderr } = spawnSync(kProgram, ["cc", "-o", app, join(folder, "main.m")], { encoding: "utf8" });
  if (status !== 0) throw new Error(stderr);
  return app;
}
