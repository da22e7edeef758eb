#include "Framework.h"

#include <algorithm>

#include "Failure.h"
#include "Files.h"
#include "MachOFormat.h"
#include "PropertyList.h"

namespace fs = std::filesystem;

namespace qvwrap {

namespace {

constexpr std::string_view kName = "QVSandbox";

/// A path from a property list that must stay inside of the folder it is taken in.
bool staysInside(const fs::path& path) {
  return !path.empty() && path.is_relative() && std::ranges::find(path, fs::path("..")) == path.end();
}

fs::path frameworkIn(const fs::path& xcframework, std::uint32_t platform) {
  const fs::path info = xcframework / "Info.plist";
  const PropertyList list(readFile(info), info.string());
  const std::string variant = platform == macho::kPlatformIOSSimulator ? "simulator" : "";
  for (const PropertyList& library : list.dictionaries("AvailableLibraries")) {
    if (library.text("SupportedPlatform") != "ios" || library.text("SupportedPlatformVariant") != variant) {
      continue;
    }
    const fs::path inside = fs::path(library.text("LibraryIdentifier")) / library.text("LibraryPath");
    if (!staysInside(inside)) {
      throw Failure(kRefused, info.string() + " names a framework outside of " + xcframework.filename().string());
    }
    return xcframework / inside;
  }
  throw Failure(kRefused, xcframework.string() + " holds no framework for " + platformName(platform) +
                              ", which the app is made for");
}

void collect(Framework& framework, const fs::path& root) {
  std::vector<fs::directory_entry> entries;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root)) {
    entries.push_back(entry);
  }
  std::ranges::sort(entries, {}, [](const fs::directory_entry& entry) { return entry.path(); });
  for (const fs::directory_entry& entry : entries) {
    const std::string path = entry.path().lexically_relative(root);
    const fs::file_status status = entry.symlink_status();
    if (fs::is_directory(status)) {
      framework.folders.push_back(path);
    } else if (fs::is_regular_file(status)) {
      const bool executable = (status.permissions() & fs::perms::owner_exec) != fs::perms::none;
      framework.files.push_back({path, readFile(entry.path()), executable});
    } else {
      throw Failure(kRefused,
                    entry.path().string() + " is neither a file nor a folder; frameworks for iOS hold no links");
    }
  }
}

const FrameworkFile& fileOf(const Framework& framework, std::string_view path, const fs::path& root) {
  const auto found = std::ranges::find(framework.files, path, &FrameworkFile::path);
  if (found == framework.files.end()) {
    throw Failure(kRefused, root.string() + " is no framework for iOS: it holds no " + std::string(path));
  }
  return *found;
}

} // namespace

std::vector<std::string> Framework::companions() const {
  std::vector<std::string> found;
  for (const LibraryCommand& command : slices.front().libraries) {
    if (command.name.starts_with("@rpath/")) {
      found.push_back(command.name.substr(7));
    }
  }
  return found;
}

Framework readFramework(const fs::path& path, std::uint32_t platform) {
  // A shell completes a folder with a slash, which leaves an empty last part.
  const fs::path given = path.has_filename() ? path : path.parent_path();
  if (!fs::is_directory(given)) {
    throw Failure(kNoInput, "there is no framework at " + path.string());
  }
  const fs::path root = given.extension() == ".xcframework" ? frameworkIn(given, platform) : given;
  if (root.filename() != "QVSandbox.framework") {
    throw Failure(kRefused, root.string() + " is not QVSandbox.framework");
  }
  if (!fs::is_directory(root)) {
    throw Failure(kNoInput, "there is no framework at " + root.string());
  }
  Framework framework;
  try {
    collect(framework, root);
  } catch (const fs::filesystem_error& error) {
    throw Failure(kNoInput, root.string() + " cannot be read: " + error.code().message());
  }
  const PropertyList info(fileOf(framework, "Info.plist", root).content, (root / "Info.plist").string());
  framework.version = info.text("CFBundleVersion");
  const std::string binary = root / kName;
  framework.slices = readMachO(fileOf(framework, kName, root).content, FileType::kLibrary, binary);
  for (const Slice& slice : framework.slices) {
    if (!slice.is64 || !slice.ownName || slice.ownName->name != kLibrary) {
      throw Failure(kRefused, binary + " is not the library: its install name is not " + std::string(kLibrary) + " (" +
                                  slice.architecture + ")");
    }
  }
  return framework;
}

void refuseUnlessFitting(const Framework& framework, const std::vector<Slice>& executable) {
  for (const Slice& slice : executable) {
    if (!slice.is64) {
      continue;
    }
    const auto part = std::ranges::find(framework.slices, slice.architecture, &Slice::architecture);
    if (part == framework.slices.end()) {
      throw Failure(kRefused,
                    "the framework has no part for " + slice.architecture + ", which the app's executable has");
    }
    if (part->platform != slice.platform) {
      throw Failure(kRefused, "the app is made for " + platformName(slice.platform) + ", and the framework for " +
                                  platformName(part->platform) + " (" + slice.architecture + ")");
    }
  }
}

} // namespace qvwrap
