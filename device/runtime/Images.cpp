// The loader's list of images.

#include <link.h>
#include <mach-o/dyld.h>
#include <unistd.h>

#include <climits>
#include <cstring>
#include <optional>
#include <string>

namespace {

struct Image {
  const void* header;
  const char* name;
};

/// Where the image's first page lies, which for a program with fixed addresses is not its load offset.
const void* headerOf(const dl_phdr_info& image) {
  for (int i = 0; i < image.dlpi_phnum; ++i) {
    const auto& segment = image.dlpi_phdr[i];
    if (segment.p_type != PT_LOAD) continue;
    const ElfW(Addr) page = segment.p_vaddr & ~(static_cast<ElfW(Addr)>(::sysconf(_SC_PAGESIZE)) - 1);
    return reinterpret_cast<const void*>(image.dlpi_addr + page);
  }
  return nullptr;
}

struct Search {
  std::uint32_t wanted;
  std::uint32_t passed = 0;
  std::optional<Image> found{};
};

/// The kernel's own page of code is in the list, but no image of anybody's.
bool isFile(const dl_phdr_info& image, std::uint32_t position) {
  return position == 0 || std::strchr(image.dlpi_name, '/') != nullptr;
}

int visit(dl_phdr_info* image, std::size_t, void* context) {
  auto& search = *static_cast<Search*>(context);
  if (!isFile(*image, search.passed)) return 0;
  if (search.passed++ != search.wanted) return 0;
  search.found = Image{headerOf(*image), image->dlpi_name};
  return 1;
}

std::optional<Image> imageAt(std::uint32_t index) {
  Search search{index};
  ::dl_iterate_phdr(visit, &search);
  return search.found;
}

const char* executablePath() {
  static const std::string& path = *[] {
    char buffer[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", buffer, sizeof buffer);
    return new std::string(buffer, length > 0 ? static_cast<std::size_t>(length) : 0);
  }();
  return path.c_str();
}

} // namespace

std::uint32_t _dyld_image_count(void) {
  Search search{UINT32_MAX};
  ::dl_iterate_phdr(visit, &search);
  return search.passed;
}

const mach_header* _dyld_get_image_header(std::uint32_t image_index) {
  // The executable's own is asked for often and never changes.
  static const void* const executable = imageAt(0)->header;
  if (image_index == 0) return static_cast<const mach_header*>(executable);
  const auto image = imageAt(image_index);
  return image ? static_cast<const mach_header*>(image->header) : nullptr;
}

const char* _dyld_get_image_name(std::uint32_t image_index) {
  if (image_index == 0) return executablePath();
  const auto image = imageAt(image_index);
  return image ? image->name : nullptr;
}
