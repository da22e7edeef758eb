#pragma once

#include <vector>

#include "Screen/Characters.h"
#include "Screen/Fonts.h"

namespace qvdevice {

/// Breaks a text into lines of that width at most: between words, and inside one that is too long for a line. What does
/// not fit into `mostLines` ends with an ellipsis.
std::vector<Line> setText(const std::u32string& text, const Font& font, double width, std::size_t mostLines);

} // namespace qvdevice
