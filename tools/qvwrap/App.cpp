#include "App.h"

#include "AppArchive.h"
#include "AppFolder.h"
#include "Failure.h"
#include "Files.h"
#include "PropertyList.h"

namespace fs = std::filesystem;

namespace qvwrap {

static std::unique_ptr<App> openArchive(const fs::path& path) {
  const auto file = std::make_shared<MappedFile>(path);
  // The function holds the file that the pieces of the result lie in.
  return std::make_unique<AppArchive>(file->content(), path.filename(), [path, file](const ZipResult& result) {
    replaceFile(path, [&](int descriptor) { result.forEach([&](View piece) { writeAll(descriptor, piece, path); }); });
  });
}

std::unique_ptr<App> openApp(const fs::path& path) {
  // A shell completes a folder with a slash, which leaves an empty last part.
  const fs::path given = path.has_filename() ? path : path.parent_path();
  std::error_code error;
  const fs::file_status status = fs::status(given, error);
  if (fs::is_directory(status)) {
    return std::make_unique<AppFolder>(fs::canonical(given));
  }
  if (fs::is_regular_file(status)) {
    return openArchive(fs::canonical(given));
  }
  throw Failure(kNoInput, fs::exists(status) ? "it is neither a folder nor a file" : "there is no such folder or file");
}

std::string executableNameIn(View infoPlist) {
  const std::string name = PropertyList(infoPlist, "its Info.plist").text("CFBundleExecutable");
  if (name.empty()) {
    throw Failure(kRefused, "its Info.plist names no executable (CFBundleExecutable)");
  }
  if (name.find('/') != std::string::npos || name == "." || name == "..") {
    throw Failure(kRefused, "its Info.plist names an executable outside of the app: " + name);
  }
  return name;
}

} // namespace qvwrap
