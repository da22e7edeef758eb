#include "Container.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <system_error>

namespace fs = std::filesystem;

namespace qvdevice {

static fs::path parentOfContainers() {
  if (const char* outer = std::getenv("QVDEVICE_CONTAINER"); outer != nullptr && *outer != '\0') {
    const fs::path temporary = fs::path(outer) / "tmp";
    return fs::is_directory(temporary) ? temporary : fs::path(outer);
  }
  return fs::temp_directory_path();
}

TemporaryContainer::TemporaryContainer() {
  std::string pattern;
  try {
    pattern = (fs::absolute(parentOfContainers()) / "qvdevice.XXXXXX").string();
  } catch (const fs::filesystem_error& error) {
    throw std::runtime_error(std::string("no folder for temporary containers: ") + error.what());
  }
  if (mkdtemp(pattern.data()) == nullptr) {
    const std::string folder = fs::path(pattern).parent_path().string();
    throw std::runtime_error("cannot make a container in " + folder + ": " + std::strerror(errno));
  }
  path_ = pattern;
}

TemporaryContainer::~TemporaryContainer() {
  if (kept_) {
    return;
  }
  try {
    removeTree(path_);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "qvdevice: %s\n", error.what());
  }
}

/// Apps test what a read-only folder does to their writes and leave it so; nobody but its owner can empty it then.
static void makeFoldersWritable(const fs::path& folder) {
  std::error_code ignored;
  fs::permissions(folder, fs::perms::owner_all, fs::perm_options::add, ignored);
  for (fs::directory_iterator entry(folder, ignored), end; !ignored && entry != end; entry.increment(ignored)) {
    if (entry->symlink_status().type() == fs::file_type::directory) {
      makeFoldersWritable(entry->path());
    }
  }
}

void removeTree(const fs::path& folder) {
  // What a link leads to is somebody else's.
  if (fs::symlink_status(folder).type() == fs::file_type::directory) {
    makeFoldersWritable(folder);
  }
  std::error_code error;
  fs::remove_all(folder, error);
  if (error) {
    throw std::runtime_error("cannot remove " + folder.string() + ": " + error.message());
  }
}

} // namespace qvdevice
