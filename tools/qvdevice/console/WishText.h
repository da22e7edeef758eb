#pragma once

#include <string>
#include <string_view>

#include "Wishes.h"

namespace qvdevice {

/// Whether a wish is sent to this path behind the token.
bool isWish(std::string_view path);

/// Reads one event, as a line of an events file. Throws Failure with the column of what is wrong with it, also when
/// there is none.
Event readEventText(const std::string& text);

/// What the body of a request to such a path asks for. Throws Failure with what is wrong with it.
Wishes::Wish wishIn(std::string_view path, const std::string& body);

} // namespace qvdevice
