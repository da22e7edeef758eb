#include "Installation.h"

namespace fs = std::filesystem;

namespace qvdevice {

fs::path programFolder() { return fs::read_symlink("/proc/self/exe").parent_path(); }

fs::path libraryFolder() { return (programFolder() / ".." / "lib").lexically_normal(); }

} // namespace qvdevice
