#include "Folders.h"

#include <cstdlib>

Folders::Folders() {
  std::string name = std::filesystem::canonical(testing::TempDir()) / "emulation.XXXXXX";
  outside = mkdtemp(name.data());
  container = outside / "container";
  device = outside / "device";
  std::filesystem::create_directory(container);
  std::filesystem::create_directory(device);
}

Folders::~Folders() { std::filesystem::remove_all(outside); }
