#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>

#include "Binary.h"
#include "Bundles.h"
#include "Checks.h"
#include "PropertyList.h"

namespace qvcheck {

namespace {

std::string joined(const std::vector<std::string>& texts) {
  std::string out;
  for (const std::string& text : texts) {
    out += (out.empty() ? "" : " ") + text;
  }
  return out;
}

/// What the folder holds, at any depth.
std::vector<std::string> contents(const std::string& folder) {
  std::vector<std::string> out;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    out.push_back(std::filesystem::relative(entry.path(), folder).string());
  }
  std::sort(out.begin(), out.end());
  return out;
}

void checkInfo(const std::string& folder, const Binary& binary, Findings& findings) {
  const std::string path = folder + "/Info.plist";
  const PropertyList info(path);
  const Slice& first = binary.slices().front();
  llvm::VersionTuple oldest = first.target().MinDeployment;
  for (const Slice& slice : binary.slices()) {
    oldest = std::min(oldest, slice.target().MinDeployment);
    if (slice.target().Platform != first.target().Platform) {
      findings.wrong(folder, "has slices for different platforms, which no Info.plist can name");
    }
  }
  const auto expect = [&](const std::string& key, const std::string& value) {
    findings.expect(path, key, value, info.text(key).value_or(""));
  };
  expect("CFBundleExecutable", kName);
  expect("CFBundleIdentifier", kIdentifier);
  expect("CFBundleName", kName);
  expect("CFBundlePackageType", "FMWK");
  expect("CFBundleVersion", kVersion);
  expect("CFBundleShortVersionString", kShortVersion);
  expect("MinimumOSVersion", oldest.getAsString());
  findings.expect(path, "CFBundleSupportedPlatforms", first.platformName(),
                  joined(info.texts("CFBundleSupportedPlatforms")));
}

void report(const Slice& slice, const Promises& promises, const Fixups& fixups) {
  std::printf("%s: %zu bytes for %s from %s; %zu exports, %zu imports; fix-ups: %zu rebases, %zu binds, %zu lazy; "
              "%zu texts\n",
              slice.where().c_str(), slice.bytes().size(), slice.platformName().c_str(),
              slice.target().MinDeployment.getAsString().c_str(), promises.exports.size(), fixups.imports,
              fixups.rebases, fixups.binds, fixups.lazyBinds, promises.texts.present.size());
}

void checkSymbols(const Binary& binary, const std::string& folder, Findings& findings) {
  const Binary symbols(folder + "/Contents/Resources/DWARF/" + kName);
  for (const Slice& slice : binary.slices()) {
    const Slice* const own = symbols.slice(slice.architecture());
    if (own) {
      checkDebugSymbols(slice, *own, findings);
    } else {
      findings.wrong(folder, "holds nothing for " + slice.architecture());
    }
  }
}

} // namespace

void checkBinary(const Binary& binary, const Promises& promises, Findings& findings) {
  for (const Slice& slice : binary.slices()) {
    checkLoadCommands(slice, findings);
    checkSegments(slice, findings);
    checkExports(slice, promises, findings);
    const Fixups fixups = checkImports(slice, promises, findings);
    checkInitialisers(slice, findings);
    checkSignature(slice, findings);
    checkTexts(slice, promises, findings);
    report(slice, promises, fixups);
  }
}

void checkFramework(const std::string& folder, const std::string& symbols, const Promises& promises,
                    Findings& findings) {
  if (!std::filesystem::is_directory(folder)) {
    throw std::runtime_error(folder + ": is no folder");
  }
  findings.expect(folder, "the name", std::string(kName) + ".framework",
                  std::filesystem::path(folder).filename().string());
  findings.expect(folder, "the list of files", std::string("Info.plist ") + kName, joined(contents(folder)));
  const Binary binary(folder + "/" + kName);
  checkBinary(binary, promises, findings);
  checkInfo(folder, binary, findings);
  if (!symbols.empty()) {
    checkSymbols(binary, symbols, findings);
  }
}

} // namespace qvcheck
