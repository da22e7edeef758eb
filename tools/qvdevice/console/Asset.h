#pragma once

#include <string_view>

namespace qvdevice {

/// A file of the page, built into the program.
struct Asset {
  std::string_view path; // behind the token
  const char* type;
  std::string_view content;
};

/// The one at `path`, "/" being the page itself; null when there is none.
const Asset* assetAt(std::string_view path);

} // namespace qvdevice
