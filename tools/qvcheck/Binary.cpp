#include "Binary.h"

#include <stdexcept>

namespace qvcheck {

using namespace llvm;

Binary::Binary(const std::string& path) {
  auto buffer = MemoryBuffer::getFile(path, false, false);
  if (!buffer) {
    throw std::runtime_error(path + ": " + buffer.getError().message());
  }
  buffer_ = std::move(*buffer);
  auto binary = object::createBinary(buffer_->getMemBufferRef());
  if (!binary) {
    throw std::runtime_error(path + ": is no whole Mach-O file: " + toString(binary.takeError()));
  }
  binary_ = std::move(*binary);
  if (auto* object = dyn_cast<object::MachOObjectFile>(binary_.get())) {
    addSlice(path, *object);
    return;
  }
  auto* universal = dyn_cast<object::MachOUniversalBinary>(binary_.get());
  if (!universal) {
    throw std::runtime_error(path + ": is no Mach-O file");
  }
  for (const auto& part : universal->objects()) {
    auto object = part.getAsObjectFile();
    if (!object) {
      throw std::runtime_error(path + ": holds a slice that is no whole Mach-O file: " + toString(object.takeError()));
    }
    objects_.push_back(std::move(*object));
    addSlice(path, *objects_.back());
  }
}

void Binary::addSlice(const std::string& path, object::MachOObjectFile& object) {
  if (!object.is64Bit() || !object.isLittleEndian()) {
    throw std::runtime_error(path + ": holds a slice that is not for a 64-bit processor");
  }
  slices_.emplace_back(path, object);
}

const Slice* Binary::slice(const std::string& architecture) const {
  for (const Slice& slice : slices_) {
    if (slice.architecture() == architecture) {
      return &slice;
    }
  }
  return nullptr;
}

} // namespace qvcheck
