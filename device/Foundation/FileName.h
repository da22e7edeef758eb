// Names as the file system has them, which are any bytes, as strings and back. Foundation drops what is no UTF-8, and a
// path that lost its last name leads to another item. So a byte that is no UTF-8 becomes a character of its own, from
// U+F780 to U+F7FF in the area for private use, and these characters' own bytes are taken for such bytes too.
#pragma once

#import <Foundation/Foundation.h>

#include <string_view>

namespace qvdevice {

NSString *fileName(std::string_view bytes);

bool isAscii(std::string_view bytes);

// The reverse, in place, on a string's UTF-8.
void restoreFileName(char *utf8);

} // namespace qvdevice
