#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "Compile.h"
#include "Effects.h"
#include "Exec.h"
#include "Failure.h"
#include "Hooks.h"
#include "Play.h"
#include "Run.h"
#include "console/LiveConsole.h"

using namespace qvdevice;

/// The program after "--" is taken off before the rest is parsed: its arguments are its own business, down to those
/// that the parser would read as lists.
static std::vector<std::string> splitCommand(std::vector<std::string>& arguments) {
  const auto mark = std::find(arguments.begin(), arguments.end(), "--");
  if (mark == arguments.end()) {
    return {};
  }
  std::vector<std::string> command(mark + 1, arguments.end());
  arguments.erase(mark, arguments.end());
  return command;
}

static void addInstall(CLI::App& command, std::vector<std::filesystem::path>& installed) {
  command
      .add_option("--install", installed,
                  "An app to install on the device first, for its extensions and what it opens; may be given again")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

static void addReport(CLI::App& command, std::optional<std::filesystem::path>& report) {
  command.add_option(
      "--report", report,
      "A folder for an HTML report of all that happens, with pictures: new, empty, or with an older report");
}

static void addRun(CLI::App& run, RunOptions& options) {
  run.add_option("APP", options.app, "The app: a folder with an Info.plist and an executable")->required();
  run.add_option("--policies", options.policies, "What the management SDK lays down: a JSON file");
  run.add_option(
      "--events", options.events,
      "What happens to the app: a file with one event a line (docs/qvdevice.md), of activate, resign, "
      "background, foreground, set KEY JSON [MESSAGE], open URL [from BUNDLEID], touch [X Y], tap TITLE, "
      "perform SELECTOR, menu, choose TITLE, type TEXT, dictate TEXT, keyboard [show|hide], alert TITLE, window "
      "WHAT NAME [LEVEL], windows, rotate HELD, authenticate, ask QUESTION, extension EVENT, await CALL, "
      "wait MILLISECONDS, screen [TITLE], ends, terminate; without it "
      "the app is used, put away and ended");
  CLI::Option* url =
      run.add_option("--launch-url", options.launchUrl, "A URL that the app is launched with, to open it");
  run.add_option("--launch-source", options.launchSource, "The bundle identifier of the app that asked for that URL")
      ->needs(url);
  run.add_option("--system-version", options.systemVersion, "The device's system version")->capture_default_str();
  run.add_option("--idiom", options.idiom, "phone or pad")
      ->check(CLI::IsMember({"phone", "pad"}))
      ->capture_default_str();
  run.add_option("--default-protection", options.defaultProtection,
                 "The protection class of items that are given none; \"absent\" for a device that tells none")
      ->check(CLI::IsMember({"NSFileProtectionNone", "NSFileProtectionComplete", "NSFileProtectionCompleteUnlessOpen",
                             "NSFileProtectionCompleteUntilFirstUserAuthentication", "absent"}))
      ->capture_default_str();
  run.add_flag("--without-terminate-with-success", options.withoutTerminateWithSuccess,
               "The application does not answer to terminateWithSuccess");
  run.add_flag("--without-printing", options.withoutPrinting, "The device has nothing to print with");
  run.add_option("--container", options.container, "The app's container, kept; without it a fresh one, removed after");
  run.add_option("--device", options.device,
                 "Where the device keeps what its apps have in common, the pasteboard for one; without it the app has "
                 "a device to itself");
  addInstall(run, options.installed);
  run.add_option("--screens", options.screens, "A folder for the pictures of the screen that `screen` takes");
  run.add_flag("--keep", options.keep, "Leave the fresh container behind and say where it is");
  run.add_flag("--no-library", options.noLibrary, "Run the app by itself, to compare");
  addReport(run, options.report);
  run.add_flag("--json", options.json, "One JSON object a line instead of text");
  run.add_flag("--verbose", options.verbose,
               "Show details too: of the log, each step and each of the user's events that the SDK hears of");
  run.add_option("--timeout", options.timeoutSeconds, "Seconds that the app may take to start, to answer, to end")
      ->check(CLI::Range(1, 3600))
      ->capture_default_str();
}

static void addConsole(CLI::App& console, ConsoleOptions& options) {
  addRun(console, options);
  // Here somebody watches, and says what happens.
  for (const char* name : {"--events", "--screens", "--report", "--verbose"}) {
    console.remove_option(console.get_option(name));
  }
  console.get_option("APP")->required(false)->description(
      "The app: a folder with an Info.plist and an executable; without it the notes app of this build");
  console.add_option("--port", options.port, "The port to listen on; without it the system chooses one")
      ->check(CLI::Range(1, 65535));
}

static void addPlay(CLI::App& play, PlayOptions& options) {
  play.add_option(
          "SCENARIO", options.scenario,
          "What the device goes through: a file with one step a line (docs/qvdevice.md), of device, install APP, "
          "launch APP [policies FILE] [url URL [from BUNDLEID]], chapter TITLE and the events of run")
      ->required();
  play.add_option("--system-version", options.systemVersion, "The device's system version, whatever the scenario says");
  play.add_option("--idiom", options.idiom, "phone or pad, whatever the scenario says")
      ->check(CLI::IsMember({"phone", "pad"}));
  play.add_option("--containers", options.containers,
                  "Where the apps' containers are kept, in folders named by identifier; without it they are removed");
  play.add_option("--device", options.device, "The device's folder, kept; without it a fresh one, removed after");
  play.add_flag("--no-library", options.noLibrary, "Run the apps by themselves, to compare");
  addReport(play, options.report);
  play.add_flag("--json", options.json, "One JSON object a line instead of text");
  play.add_flag("--verbose", options.verbose, "All that happens, not a line for each step");
  play.add_option("--timeout", options.timeoutSeconds, "Seconds that an app may take to start, to answer, to end")
      ->check(CLI::Range(1, 3600))
      ->capture_default_str();
}

static void addHooks(CLI::App& hooks, HooksOptions& options) {
  hooks.add_option("APP", options.app, "The app; without one a sample app of this build");
  CLI::Option* version =
      hooks.add_option("--system-version", options.systemVersion, "The device's system version")->capture_default_str();
  hooks.add_option("--idiom", options.idiom, "phone or pad")
      ->check(CLI::IsMember({"phone", "pad"}))
      ->capture_default_str();
  CLI::Option* json = hooks.add_flag("--json", options.json, "One JSON object a line instead of text");
  hooks.add_flag("--markdown", options.markdown, "The published list (docs/hooks.md), over all releases")
      ->excludes(json)
      ->excludes(version);
  hooks.add_option("--timeout", options.timeoutSeconds, "Seconds that the app may take to start and to answer")
      ->check(CLI::Range(1, 3600))
      ->capture_default_str();
}

static void addEffects(CLI::App& effects, EffectsOptions& options) {
  effects.add_option("IMAGE", options.image, "A PNG; without one a picture of the program's own");
  effects.add_option("-o", options.output,
                     "The PNG to write, replaced when it is there; without a name it is IMAGE-effects.png, and new");
  effects.add_flag("--json", options.json, "Say what was written as a JSON object");
}

static int command(std::vector<std::string> arguments) {
  ExecOptions execOptions;
  RunOptions runOptions;
  ConsoleOptions consoleOptions;
  PlayOptions playOptions;
  HooksOptions hooksOptions;
  EffectsOptions effectsOptions;
  if (!arguments.empty() && arguments.front() == "cc") {
    return compile({arguments.begin() + 1, arguments.end()});
  }
  if (!arguments.empty() && arguments.front() == "exec") {
    execOptions.command = splitCommand(arguments);
  }

  CLI::App app("Runs Objective-C apps on the simulated device.", "qvdevice");
  app.require_subcommand(1);
  CLI::App* run = app.add_subcommand("run", "Run an app under the sandbox and show what happens");
  addRun(*run, runOptions);
  CLI::App* console =
      app.add_subcommand("console", "Run an app and show it on a local page, where one does things to it");
  addConsole(*console, consoleOptions);
  CLI::App* play = app.add_subcommand("play", "Play a scenario: several apps, one after the other, on one device");
  addPlay(*play, playOptions);
  app.add_subcommand("cc", "Compile an app's Objective-C sources into a bundle; qvdevice cc --help tells more");
  CLI::App* hooks = app.add_subcommand("hooks", "Show what the library has hooked in an app, and what became of it");
  addHooks(*hooks, hooksOptions);
  CLI::App* effects = app.add_subcommand("effects", "Show an image beside the looks that the library gives it");
  addEffects(*effects, effectsOptions);
  CLI::App* exec =
      app.add_subcommand("exec", "exec [OPTIONS] -- PROGRAM ARGS...: run any program in a container of its own");
  exec->add_option("--device", execOptions.device, "The device's folder; without it there is none");
  addInstall(*exec, execOptions.installed);
  exec->add_flag("--keep", execOptions.keep, "Leave the container behind and say where it is");

  try {
    std::reverse(arguments.begin(), arguments.end());
    app.parse(arguments);
    if (exec->parsed() && execOptions.command.empty()) {
      throw CLI::RequiredError("-- PROGRAM");
    }
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kDone : kUsage;
  }
  if (effects->parsed()) {
    return qvdevice::effects(effectsOptions);
  }
  if (console->parsed()) {
    return qvdevice::console(consoleOptions);
  }
  if (play->parsed()) {
    return qvdevice::play(playOptions);
  }
  if (hooks->parsed()) {
    return qvdevice::hooks(hooksOptions);
  }
  return run->parsed() ? qvdevice::run(runOptions) : qvdevice::exec(execOptions);
}

int main(int argc, char** argv) {
  try {
    return command({argv + 1, argv + argc});
  } catch (const Failure& failure) {
    std::fprintf(stderr, "qvdevice: %s\n", failure.what());
    return failure.status();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "qvdevice: %s\n", error.what());
    return kInternal;
  }
}
