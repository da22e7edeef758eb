#include "typeName.hpp"

#include <optional>

namespace qvsb {

namespace {

/// The types that one character says in full.
std::optional<std::string_view> plainName(char code) {
  switch (code) {
  case 'c':
    return "char";
  case 'i':
    return "int";
  case 's':
    return "short";
  case 'l':
    return "long";
  case 'q':
    return "long long";
  case 'C':
    return "unsigned char";
  case 'I':
    return "unsigned int";
  case 'S':
    return "unsigned short";
  case 'L':
    return "unsigned long";
  case 'Q':
    return "unsigned long long";
  case 'f':
    return "float";
  case 'd':
    return "double";
  case 'B':
    return "BOOL";
  case 'v':
    return "void";
  case '*':
    return "char *";
  case '#':
    return "Class";
  case ':':
    return "SEL";
  case '?':
    return "unknown";
  case 'b':
    return "bitfield";
  case '(':
    return "union";
  default:
    return std::nullopt;
  }
}

/// `whole` begins before the brace when qualifiers do, and these stay in the name.
std::string structName(std::string_view whole) {
  std::string_view name = whole.substr(0, whole.find('='));
  while (!name.empty() && (name.front() == '{' || name.front() == '}')) {
    name.remove_prefix(1);
  }
  while (!name.empty() && (name.back() == '{' || name.back() == '}')) {
    name.remove_suffix(1);
  }
  std::string result = "struct ";
  result += name;
  return result;
}

std::string objectName(std::string_view whole, std::size_t at) {
  if (at + 1 == whole.size() || whole[at + 1] != '"') {
    return "id";
  }
  // From the first quotation mark of all, which malformed text may have before the `@`.
  std::string_view name = whole.substr(whole.find('"') + 1);
  name = name.substr(0, name.find('"'));
  std::string result = name.starts_with('<') ? "id" : "";
  result += name;
  if (!name.starts_with('<')) {
    result += " *";
  }
  return result;
}

/// The name of the type that the character at `at` begins, unless it is one of those that are passed over.
std::optional<std::string> nameAt(std::string_view whole, std::size_t at) {
  switch (whole[at]) {
  case '{':
    return structName(whole);
  case '@':
    return objectName(whole, at);
  default:
    if (const auto name = plainName(whole[at])) {
      return std::string(*name);
    }
    return std::nullopt;
  }
}

} // namespace

std::string typeName(std::string_view encoding) {
  // A pointer or an array is named after what follows it. That may go on for as long as the text does: what has been
  // met is kept in a string and not on the stack.
  std::string around;
  std::string name;
  std::size_t at = 0;
  while (at < encoding.size()) {
    if (encoding[at] == '^' || encoding[at] == '[') {
      around += encoding[at];
      encoding.remove_prefix(at + 1);
      at = 0;
    } else if (auto found = nameAt(encoding, at)) {
      name = std::move(*found);
      break;
    } else {
      ++at;
    }
  }
  for (; !around.empty(); around.pop_back()) {
    name += around.back() == '^' ? " *" : "[]";
  }
  return name;
}

} // namespace qvsb
