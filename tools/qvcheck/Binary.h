// A Mach-O file, thin or universal.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <llvm/Object/Binary.h>
#include <llvm/Object/MachO.h>
#include <llvm/Object/MachOUniversal.h>
#include <llvm/Support/MemoryBuffer.h>

#include "Slice.h"

namespace qvcheck {

class Binary {
public:
  /// Throws std::runtime_error with a sentence about a file that is missing, no Mach-O file, or not whole.
  explicit Binary(const std::string& path);

  /// Its slices, in the order of the file.
  const std::vector<Slice>& slices() const { return slices_; }
  /// The slice of that architecture, or null.
  const Slice* slice(const std::string& architecture) const;

private:
  void addSlice(const std::string& path, llvm::object::MachOObjectFile& object);

  std::unique_ptr<llvm::MemoryBuffer> buffer_;
  std::unique_ptr<llvm::object::Binary> binary_;
  std::vector<std::unique_ptr<llvm::object::MachOObjectFile>> objects_;
  std::vector<Slice> slices_;
};

} // namespace qvcheck
