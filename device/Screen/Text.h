#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <vector>

#include "Screen/Fonts.h"

namespace qvdevice {

/// The characters of a string that can be seen: at most `most`; half a character counts as one that nobody knows, and
/// of what has no look of its own only line breaks are left.
std::u32string charactersOf(NSString *string, std::size_t most = 2000);

/// Breaks a text into lines of that width at most: between words, and inside one that is too long for a line. What does
/// not fit into `mostLines` ends with an ellipsis.
std::vector<Line> setText(const std::u32string &text, const Font &font, double width, std::size_t mostLines);

} // namespace qvdevice
