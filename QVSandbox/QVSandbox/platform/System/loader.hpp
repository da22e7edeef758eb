// Of the loader: which image an address lies in.
#pragma once

#include "../objc/target.hpp"

extern "C" {
/// `Dl_info`, the same on both targets.
struct QVSBImageInfo {
  const char* path;
  void* base;
  const char* nearestSymbol;
  void* nearestSymbolAddress;
};
int qvsbImageOfAddress(const void* address, QVSBImageInfo* info) QVSB_SYMBOL(dladdr);
const void* qvsbImageHeader(unsigned int index) QVSB_SYMBOL(_dyld_get_image_header);
}

namespace qvsb {

/// Where the image begins that holds the address; null when none does.
inline const void* baseOfImageAt(const void* address) {
  QVSBImageInfo info{};
  return qvsbImageOfAddress(address, &info) ? info.base : nullptr;
}

/// Where the process's executable begins.
inline const void* baseOfMainExecutable() { return qvsbImageHeader(0); }

} // namespace qvsb
