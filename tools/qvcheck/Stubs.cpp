#include "Stubs.h"

#include <filesystem>
#include <stdexcept>

#include <llvm/Support/MemoryBuffer.h>
#include <llvm/TextAPI/InterfaceFile.h>
#include <llvm/TextAPI/TextAPIReader.h>

namespace qvcheck {

using namespace llvm;

static std::string linkerName(const MachO::Symbol& symbol) {
  if (symbol.getKind() == MachO::EncodeKind::ObjectiveCClass) {
    return (MachO::ObjC2ClassNamePrefix + symbol.getName()).str();
  }
  return symbol.getName().str();
}

void Stubs::add(const std::string& folder) {
  std::error_code error;
  bool found = false;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, error)) {
    if (entry.path().extension() == ".tbd") {
      addFile(entry.path().string());
      found = true;
    }
  }
  if (error) {
    throw std::runtime_error(folder + ": " + error.message());
  }
  if (!found) {
    throw std::runtime_error(folder + ": holds no stub for the linker");
  }
}

void Stubs::addFile(const std::string& path) {
  auto buffer = MemoryBuffer::getFile(path);
  if (!buffer) {
    throw std::runtime_error(path + ": " + buffer.getError().message());
  }
  auto file = MachO::TextAPIReader::get((*buffer)->getMemBufferRef());
  if (!file) {
    throw std::runtime_error(path + ": is no stub for the linker: " + toString(file.takeError()));
  }
  auto& targets = symbols_[(*file)->getInstallName().str()];
  for (const MachO::Symbol* symbol : (*file)->symbols()) {
    for (const MachO::Target& target : symbol->targets()) {
      targets[target].insert(linkerName(*symbol));
    }
  }
}

bool Stubs::has(const std::string& installName, const MachO::Target& target, const std::string& symbol) const {
  const auto library = symbols_.find(installName);
  if (library == symbols_.end()) {
    return false;
  }
  const auto names = library->second.find(target);
  return names != library->second.end() && names->second.contains(symbol);
}

} // namespace qvcheck
