// The runtime's type encodings, made readable.
#pragma once

#include <string>
#include <string_view>

namespace qvsb {

/// The type's name as a person would write it, for log lines: "NSString *" of `@"NSString"`, "int[]" of `[10i]`. What
/// it does not know is passed over, so every text has an answer, if only an empty one. Takes time and memory in
/// proportion to the encoding, however deep it is nested.
std::string typeName(std::string_view encoding);

} // namespace qvsb
