#pragma once

#include <string_view>

namespace qvdevice {

/// An empty text for a URL with a scheme, written as the standard (RFC 3986) has it: nothing but its characters, and
/// each percent sign followed by two hexadecimal digits. Otherwise what is wrong, as the end of a sentence that begins
/// with the text.
std::string_view urlProblem(std::string_view text);

} // namespace qvdevice
