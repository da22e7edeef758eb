#include "Wrap.h"

#include <algorithm>

#include "App.h"
#include "LoadCommands.h"
#include "PropertyList.h"

namespace fs = std::filesystem;

namespace qvwrap {

namespace {

std::string listed(const std::vector<std::string>& texts) {
  std::string list;
  for (const std::string& text : texts) {
    list += (list.empty() ? "" : ", ") + text;
  }
  return list;
}

std::vector<std::string> architectures(const std::vector<Slice>& slices, bool is64) {
  std::vector<std::string> names;
  for (const Slice& slice : slices) {
    if (slice.is64 == is64) {
      names.push_back(slice.architecture);
    }
  }
  return names;
}

const Slice& first64(const std::vector<Slice>& slices) {
  const auto found = std::ranges::find_if(slices, &Slice::is64);
  if (found == slices.end()) {
    throw Failure(kRefused, "its executable is 32-bit only, and the library is 64-bit");
  }
  return *found;
}

std::vector<Slice> slicesOf(const App& app) {
  return readMachO(app.executable(), FileType::kExecutable, "its executable");
}

/// What shows that an app is signed; empty when nothing does.
std::string signatureOf(const App& app, const std::vector<Slice>& slices) {
  for (const char* file : {"_CodeSignature", "embedded.mobileprovision"}) {
    if (app.holds(file)) {
      return std::string("it holds ") + file;
    }
  }
  const auto found = std::ranges::find_if(slices, &Slice::isSigned);
  return found == slices.end() ? "" : "its executable carries a signature (" + found->architecture + ")";
}

/// Versions are for people to read, so what is none of that is not shown.
std::string titleOf(const std::string& version) { return version.empty() ? "QVSandbox" : "QVSandbox " + version; }

void addLeftAlone(Report& report, const App& app, const std::vector<Slice>& slices) {
  for (const std::string& extension : app.extensions()) {
    report.lines.push_back({"left alone", extension + ": it runs in a process of its own, without the library"});
  }
  for (const std::string& architecture : architectures(slices, false)) {
    report.lines.push_back({"left alone", architecture + " (32-bit): where this part runs, the library does not"});
  }
}

void addNeeds(Report& report, const App& app, const Framework& framework, const Slice& executable) {
  for (const std::string& companion : framework.companions()) {
    const std::string place = "Frameworks/" + companion;
    if (!app.holds(place)) {
      report.lines.push_back({"needed", place + ", which the library loads and the app does not hold: add it"});
    }
  }
  const Version oldest = first64(framework.slices).oldestRelease;
  if (executable.oldestRelease < oldest) {
    report.lines.push_back({"note", "the app runs from iOS " + executable.oldestRelease.text() +
                                        " on, the library from " + oldest.text() +
                                        " on: under older releases the app does not start any more"});
  }
}

/// The version of the framework in an app. Throws Failure when there is no whole one that fits.
std::string installedVersion(const App& app, const std::vector<Slice>& executable) {
  const std::string folder = kFrameworkFolder;
  const std::optional<Bytes> info = app.content(folder + "/Info.plist");
  const std::optional<Bytes> binary = app.content(folder + "/QVSandbox");
  if (!info || !binary) {
    throw Failure(kHalfWrapped, "it holds no whole " + folder);
  }
  Framework framework;
  framework.slices = readMachO(*binary, FileType::kLibrary, folder + "/QVSandbox");
  refuseUnlessFitting(framework, executable);
  return PropertyList(*info, folder + "/Info.plist").text("CFBundleVersion");
}

/// What is amiss in an app that holds something of a wrapping; empty when all is well. `version` is the framework's.
std::string amiss(const App& app, const std::vector<Slice>& slices, std::string& version) {
  for (const Slice& slice : slices) {
    if (slice.is64 && slice.library() == nullptr) {
      return "its executable does not load the library (" + slice.architecture + ")";
    }
  }
  for (const Slice& slice : slices) {
    if (slice.is64 && !slice.library()->note) {
      return "its executable loads the library, but not by qvwrap's doing (" + slice.architecture + ")";
    }
  }
  try {
    version = installedVersion(app, slices);
  } catch (const Failure& failure) {
    return failure.what();
  }
  return {};
}

} // namespace

std::string Report::text() const {
  std::string all = headline + "\n";
  std::size_t width = 0;
  for (const Line& line : lines) {
    width = std::max(width, line.name.size());
  }
  for (const Line& line : lines) {
    all += "  " + line.name + std::string(width - line.name.size() + 2, ' ') + line.text + "\n";
  }
  return next.empty() ? all : all + next + "\n";
}

Report wrap(const fs::path& path, const fs::path& frameworkPath, bool maySpoilSignature) {
  const std::unique_ptr<App> app = openApp(path);
  const std::vector<Slice> slices = slicesOf(*app);
  refuseUnlessWrappable(slices, maySpoilSignature);
  if (app->holds(kFrameworkFolder)) {
    throw Failure(kRefused, std::string("it holds ") + kFrameworkFolder +
                                " already, which its executable does not load; remove that folder first");
  }
  const std::string signature = signatureOf(*app, slices);
  if (!signature.empty() && !maySpoilSignature) {
    throw Failure(kRefused, "it is signed (" + signature +
                                "), and wrapping spoils the signature; --invalidate-signature wraps it all the same");
  }
  const Slice& executable = first64(slices);
  const Framework framework = readFramework(frameworkPath, executable.platform);
  refuseUnlessFitting(framework, slices);
  const bool addFolder = !app->holds("Frameworks");
  const Bytes wrapped = addLibrary(app->executable(), slices, framework.library(), addFolder);
  app->put(wrapped, framework, addFolder);

  Report report;
  report.headline = app->name() + " is wrapped: " + titleOf(framework.version) + " is loaded before its main.";
  report.lines.push_back({"executable", app->executableName() + " (" + listed(architectures(slices, true)) + ", for " +
                                            platformName(executable.platform) + ")"});
  report.lines.push_back({"framework", kFrameworkFolder});
  addNeeds(report, *app, framework, executable);
  addLeftAlone(report, *app, slices);
  report.next = signature.empty() ? "It is not signed: sign the frameworks, then the app, before you install it."
                                  : "Its signature is no longer valid: sign the frameworks, then the app, anew before "
                                    "you install it.";
  return report;
}

Report check(const fs::path& path) {
  const std::unique_ptr<App> app = openApp(path);
  const std::vector<Slice> slices = slicesOf(*app);
  const Slice& executable = first64(slices);
  const bool loads = std::ranges::any_of(slices, [](const Slice& slice) { return slice.library() != nullptr; });
  const bool holds = app->holds(kFrameworkFolder);

  Report report;
  report.lines.push_back({"executable", app->executableName() + " (" + listed(architectures(slices, true)) + ", for " +
                                            platformName(executable.platform) + " from " +
                                            executable.oldestRelease.text() + " on)"});
  if (!loads && !holds) {
    report.status = kNotWrapped;
    report.headline = app->name() + " is not wrapped.";
  } else if (std::string version, wrong = amiss(*app, slices, version); !wrong.empty()) {
    report.status = kHalfWrapped;
    report.headline = app->name() + " is not wrapped as qvwrap does it: " + wrong + ".";
  } else {
    report.headline = app->name() + " is wrapped: " + titleOf(version) + " is loaded before its main.";
    report.lines.push_back({"framework", kFrameworkFolder});
    report.lines.push_back(
        {"search path",
         std::string(kRunpath) + (executable.library()->note->addedRunpath ? ", added by qvwrap" : ", the app's own")});
  }
  if (loads) {
    addLeftAlone(report, *app, slices);
  }
  const bool encrypted = std::ranges::any_of(slices, &Slice::encrypted);
  if (encrypted) {
    report.lines.push_back({"encrypted", "yes, as the App Store delivers it"});
  }
  const std::string signature = signatureOf(*app, slices);
  report.lines.push_back(
      {"signature", signature.empty() ? "none" : signature + "; whether it is valid is not looked at"});
  return report;
}

Report remove(const fs::path& path, bool maySpoilSignature) {
  const std::unique_ptr<App> app = openApp(path);
  const std::vector<Slice> slices = slicesOf(*app);
  const Slice& executable = first64(slices);
  if (std::ranges::none_of(slices, [](const Slice& slice) { return slice.library() != nullptr; })) {
    throw Failure(kRefused, "it is not wrapped");
  }
  const Restored restored = removeLibrary(app->executable(), slices);
  if (!restored.original && !maySpoilSignature) {
    throw Failure(kRefused, "its executable has been signed, or changed otherwise, since it was wrapped, so it cannot "
                            "be made what it was; --invalidate-signature takes the library out all the same");
  }
  const App::Taken taken = app->take(restored.file, executable.library()->note->addedFolder);

  Report report;
  report.headline = app->name() + " is no longer wrapped.";
  report.lines.push_back({"executable", restored.original ? app->executableName() + " is byte for byte what it was"
                                                          : app->executableName() +
                                                                " is not what it was: it was changed after it was "
                                                                "wrapped, and only the library was taken out"});
  if (taken == App::Taken::kRepacked) {
    report.lines.push_back({"archive", "not byte for byte what it was: it was changed or repacked after the app in it "
                                       "was wrapped; no file that it holds is lost"});
  }
  if (!restored.original) {
    report.next = "Sign the app before you install it.";
  }
  return report;
}

} // namespace qvwrap
