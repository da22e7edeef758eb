#include "Installation.h"

#include <cstdlib>

namespace fs = std::filesystem;

namespace qvdevice {

fs::path programFolder() { return fs::read_symlink("/proc/self/exe").parent_path(); }

std::string withOurLibrariesFirst() {
  const char* others = std::getenv("LD_LIBRARY_PATH");
  const std::string ours = libraryFolder().string();
  return others != nullptr && *others != '\0' ? ours + ":" + others : ours;
}

fs::path appsFolder() { return (programFolder() / ".." / "apps").lexically_normal(); }

fs::path libraryFolder() { return (programFolder() / ".." / "lib").lexically_normal(); }

} // namespace qvdevice
