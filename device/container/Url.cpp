#include "container/Url.h"

#include <algorithm>

namespace qvdevice {

namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isHexadecimal(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

bool belongsToScheme(char c) { return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.'; }

bool belongsToRest(char c) {
  return isLetter(c) || isDigit(c) || std::string_view("-._~:/?#[]@!$&'()*+,;=%").find(c) != std::string_view::npos;
}

bool isWellFormed(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos || colon == 0 || colon + 1 == text.size()) return false;
  const std::string_view scheme = text.substr(0, colon);
  const std::string_view rest = text.substr(colon + 1);
  if (!isLetter(scheme.front()) || !std::all_of(scheme.begin(), scheme.end(), belongsToScheme)) return false;
  if (!std::all_of(rest.begin(), rest.end(), belongsToRest)) return false;
  if (std::count(rest.begin(), rest.end(), '#') > 1) return false;
  for (std::size_t percent = rest.find('%'); percent != std::string_view::npos; percent = rest.find('%', percent + 1)) {
    if (percent + 2 >= rest.size() || !isHexadecimal(rest[percent + 1]) || !isHexadecimal(rest[percent + 2])) {
      return false;
    }
  }
  return true;
}

/// Whether a query or a fragment follows the host without a path between them. Debian's Foundation makes no NSURL of
/// that.
bool lacksPathAfterHost(std::string_view text) {
  const std::size_t slashes = text.find("://");
  if (slashes == std::string_view::npos || slashes != text.find(':')) return false;
  const std::size_t end = text.find_first_of("/?#", slashes + 3);
  return end != std::string_view::npos && text[end] != '/';
}

} // namespace

std::string_view urlProblem(std::string_view text) {
  if (!isWellFormed(text)) return " is no URL";
  if (lacksPathAfterHost(text)) return " cannot be read by this device: put a slash after the host";
  return {};
}

} // namespace qvdevice
