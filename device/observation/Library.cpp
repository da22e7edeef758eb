#include "observation/Library.h"

#include <dlfcn.h>
#include <link.h>

#include <atomic>
#include <cstdlib>
#include <string_view>

namespace qvdevice {

namespace {

constexpr std::string_view kFile = "/libQVSandbox.so";

std::atomic<std::uintptr_t> codeStart{0};
std::atomic<std::uintptr_t> codeEnd{0};

int visit(dl_phdr_info* image, std::size_t, void*) {
  if (!std::string_view(image->dlpi_name).ends_with(kFile)) return 0;
  for (int i = 0; i < image->dlpi_phnum; ++i) {
    const auto& segment = image->dlpi_phdr[i];
    if (segment.p_type != PT_LOAD || (segment.p_flags & PF_X) == 0) continue;
    codeEnd = image->dlpi_addr + segment.p_vaddr + segment.p_memsz;
    codeStart = image->dlpi_addr + segment.p_vaddr;
  }
  return 1;
}

} // namespace

bool isObserved() {
  static const bool observed = std::getenv("QVDEVICE_TRACE_FD") != nullptr;
  return observed;
}

bool isInLibrary(const void* address) {
  // Once loaded it stays; until then it may come at any time.
  if (codeStart == 0) ::dl_iterate_phdr(visit, nullptr);
  const auto place = reinterpret_cast<std::uintptr_t>(address);
  return codeStart != 0 && place >= codeStart && place < codeEnd;
}

bool isExportedByLibrary(const std::string& function) { return isInLibrary(::dlsym(RTLD_DEFAULT, function.c_str())); }

std::string imageAt(const void* address) {
  Dl_info image{};
  if (::dladdr(address, &image) == 0 || image.dli_fname == nullptr) return {};
  const std::string_view path = image.dli_fname;
  return std::string(path.substr(path.rfind('/') + 1));
}

} // namespace qvdevice
