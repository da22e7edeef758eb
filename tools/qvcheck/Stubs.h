// The linker's stubs: which library has which symbol on which target.
#pragma once

#include <map>
#include <set>
#include <string>

#include <llvm/TextAPI/Target.h>

namespace qvcheck {

class Stubs {
public:
  /// Adds every .tbd file under `folder`. Throws std::runtime_error with a sentence when there is none, or one that is
  /// no stub.
  void add(const std::string& folder);

  bool hasLibrary(const std::string& installName) const { return symbols_.contains(installName); }
  /// Whether the library has the symbol, by the name that the linker sees.
  bool has(const std::string& installName, const llvm::MachO::Target& target, const std::string& symbol) const;

private:
  void addFile(const std::string& path);

  /// By install name and target, which compares by architecture and platform.
  std::map<std::string, std::map<llvm::MachO::Target, std::set<std::string>>> symbols_;
};

} // namespace qvcheck
