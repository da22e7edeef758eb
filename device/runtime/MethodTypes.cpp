// What a method takes and returns, read from its encoding. GCC's runtime takes a block for two arguments, leaves the
// stack offset in an argument's type, and ends the process or reads on past the end of an encoding that it does not
// know. Apple's counts a block as one and gives the type alone; these functions do the same, for everybody in the
// process, and take the place of the runtime's own. A type that the encoding breaks off in ends where the text does.
#include <cstdlib>
#include <cstring>
#include <string_view>

extern "C" {
struct objc_method;
const char* method_getTypeEncoding(objc_method* method);

unsigned int method_getNumberOfArguments(objc_method* method);
char* method_copyReturnType(objc_method* method);
char* method_copyArgumentType(objc_method* method, unsigned int index);
}

namespace {

/// Past what is between a bracket and its counterpart, both included.
std::size_t bracketed(std::string_view text, char open, char close) {
  std::size_t depth = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == open) ++depth;
    if (text[at] == close && --depth == 0) return at + 1;
  }
  return text.size();
}

/// After the `@`: a block, whose signature may follow, or the name of a class.
std::size_t restOfObject(std::string_view text) {
  if (text.starts_with("?<")) return 1 + bracketed(text.substr(1), '<', '>');
  if (text.starts_with('?')) return 1;
  if (!text.starts_with('"')) return 0;
  const std::size_t end = text.find('"', 1);
  return end == text.npos ? text.size() : end + 1;
}

std::size_t typeLength(std::string_view text) {
  const std::size_t start = text.find_first_not_of("rnNoORVAj^");
  if (start == text.npos) return text.size();
  const std::string_view type = text.substr(start);
  switch (type.front()) {
  case '{':
    return start + bracketed(type, '{', '}');
  case '(':
    return start + bracketed(type, '(', ')');
  case '[':
    return start + bracketed(type, '[', ']');
  case '@':
    return start + 1 + restOfObject(type.substr(1));
  default:
    return start + 1;
  }
}

/// The types of an encoding one after the other: first what is returned, then what is taken.
class Types {
public:
  explicit Types(objc_method* method) {
    const char* text = method ? method_getTypeEncoding(method) : nullptr;
    rest_ = text ? text : "";
  }

  bool atEnd() const { return rest_.empty(); }

  std::string_view next() {
    const std::string_view type = rest_.substr(0, typeLength(rest_));
    rest_.remove_prefix(type.size());
    const std::size_t offset = rest_.find_first_not_of("+-0123456789");
    rest_.remove_prefix(offset == rest_.npos ? rest_.size() : offset);
    return type;
  }

private:
  std::string_view rest_;
};

char* copied(std::string_view type) {
  char* copy = static_cast<char*>(std::malloc(type.size() + 1));
  if (!copy) return nullptr;
  std::memcpy(copy, type.data(), type.size());
  copy[type.size()] = '\0';
  return copy;
}

} // namespace

unsigned int method_getNumberOfArguments(objc_method* method) {
  Types types(method);
  unsigned int count = 0;
  for (types.next(); !types.atEnd(); types.next())
    ++count;
  return count;
}

char* method_copyReturnType(objc_method* method) { return method ? copied(Types(method).next()) : nullptr; }

char* method_copyArgumentType(objc_method* method, unsigned int index) {
  Types types(method);
  types.next();
  for (; index > 0 && !types.atEnd(); --index)
    types.next();
  return types.atEnd() ? nullptr : copied(types.next());
}
