#include "Access.h"

#include <array>
#include <cerrno>
#include <system_error>

#include <sys/random.h>

namespace qvdevice {

std::string makeToken() {
  std::array<unsigned char, 16> bytes{};
  if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
    throw std::system_error(errno, std::generic_category(), "no random numbers");
  }
  static constexpr std::string_view kDigits = "0123456789abcdef";
  std::string token;
  for (const unsigned char byte : bytes) {
    token += {kDigits[byte >> 4], kDigits[byte & 0xf]};
  }
  return token;
}

/// Looks at every character, whatever it has found.
static bool equal(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) {
    return false;
  }
  volatile unsigned char difference = 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    difference = static_cast<unsigned char>(difference | (a[i] ^ b[i]));
  }
  return difference == 0;
}

std::string Access::address() const { return "http://127.0.0.1:" + std::to_string(port_) + "/" + token_ + "/"; }

bool Access::isOurHost(std::string_view host) const {
  const std::string port = ":" + std::to_string(port_);
  return host == "127.0.0.1" + port || host == "localhost" + port;
}

bool Access::isOurOrigin(std::string_view origin) const {
  static constexpr std::string_view kScheme = "http://";
  return origin.starts_with(kScheme) && isOurHost(origin.substr(kScheme.size()));
}

std::string_view Access::behindToken(std::string_view path) const {
  if (!path.starts_with('/')) {
    return {};
  }
  const std::size_t end = path.find('/', 1);
  if (end == std::string_view::npos || !equal(path.substr(1, end - 1), token_)) {
    return {};
  }
  return path.substr(end);
}

} // namespace qvdevice
