#include <algorithm>
#include <filesystem>
#include <map>

#include "Binary.h"
#include "Bundles.h"
#include "PropertyList.h"

namespace qvcheck {

namespace {

struct Part {
  const char* platform; ///< as the binary names it
  const char* variant;
  std::vector<std::string> architectures;
};

/// By the identifier, which is the folder's name too.
const std::map<std::string, Part> parts{
    {"ios-arm64", {"iPhoneOS", "", {"arm64"}}},
    {"ios-arm64_x86_64-simulator", {"iPhoneSimulator", "simulator", {"arm64", "x86_64"}}}};

std::string joined(std::vector<std::string> texts) {
  std::sort(texts.begin(), texts.end());
  std::string out;
  for (const std::string& text : texts) {
    out += (out.empty() ? "" : " ") + text;
  }
  return out;
}

void checkPart(const std::string& folder, const std::string& info, const std::string& identifier, const Part& part,
               const PropertyList::Item& item, const Promises& promises, Findings& findings) {
  const auto expect = [&](const std::string& key, const std::string& value) {
    findings.expect(info, key + " of " + identifier, value, item.text(key).value_or(""));
  };
  const std::string framework = std::string(kName) + ".framework";
  expect("LibraryPath", framework);
  expect("BinaryPath", framework + "/" + kName);
  expect("DebugSymbolsPath", "dSYMs");
  expect("SupportedPlatform", "ios");
  expect("SupportedPlatformVariant", part.variant);
  findings.expect(info, "SupportedArchitectures of " + identifier, joined(part.architectures),
                  joined(item.texts("SupportedArchitectures")));

  const std::string place = folder + "/" + identifier;
  checkFramework(place + "/" + framework, place + "/dSYMs/" + framework + ".dSYM", promises, findings);
  const Binary binary(place + "/" + framework + "/" + kName);
  std::vector<std::string> architectures;
  for (const Slice& slice : binary.slices()) {
    architectures.push_back(slice.architecture());
    findings.expect(slice.where(), "the platform", part.platform, slice.platformName());
  }
  findings.expect(place, "the list of architectures", joined(part.architectures), joined(architectures));
}

} // namespace

void checkXCFramework(const std::string& folder, const Promises& promises, Findings& findings) {
  const std::string path = folder + "/Info.plist";
  const PropertyList info(path);
  const auto expect = [&](const std::string& key, const std::string& value) {
    findings.expect(path, key, value, info.text(key).value_or(""));
  };
  expect("CFBundlePackageType", "XFWK");
  expect("XCFrameworkFormatVersion", "1.0");

  std::vector<std::string> expected{"Info.plist"};
  std::vector<std::string> named;
  for (const auto& [identifier, part] : parts) {
    expected.push_back(identifier);
  }
  for (const PropertyList::Item& item : info.items("AvailableLibraries")) {
    const std::string identifier = item.text("LibraryIdentifier").value_or("");
    named.push_back(identifier);
    const auto part = parts.find(identifier);
    if (part != parts.end()) {
      checkPart(folder, path, identifier, part->second, item, promises, findings);
    }
  }
  named.push_back("Info.plist");
  findings.expect(path, "the list of libraries", joined(expected), joined(named));

  std::vector<std::string> found;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    found.push_back(entry.path().filename().string());
  }
  findings.expect(folder, "the list of files", joined(expected), joined(found));
}

} // namespace qvcheck
