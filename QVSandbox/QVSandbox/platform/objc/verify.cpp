#include "verify.hpp"

#include "raise.hpp"

namespace qvsb {

namespace {

bool isQualifier(char c) {
  for (const char qualifier : {'r', 'n', 'N', 'o', 'O', 'R', 'V', 'A'}) {
    if (c == qualifier) {
      return true;
    }
  }
  return false;
}

const char* skipQualifiers(const char* text) {
  while (isQualifier(*text)) {
    ++text;
  }
  return text;
}

const char* skipNumber(const char* text) {
  while ((*text >= '0' && *text <= '9') || *text == '-' || *text == '+') {
    ++text;
  }
  return text;
}

const char* skipBracketed(const char* text, char open, char close) {
  int depth = 0;
  do {
    depth += *text == open;
    depth -= *text == close;
    ++text;
  } while (depth > 0 && *text);
  return text;
}

/// Past one type, qualifiers before it included.
const char* skipType(const char* text) {
  text = skipQualifiers(text);
  while (*text == '^') {
    text = skipQualifiers(text + 1);
  }
  switch (*text) {
  case '\0':
    return text;
  case '{':
    return skipBracketed(text, '{', '}');
  case '(':
    return skipBracketed(text, '(', ')');
  case '[':
    return skipBracketed(text, '[', ']');
  case '@':
    ++text;
    if (*text == '?') {
      ++text;
      return *text == '<' ? skipBracketed(text, '<', '>') : text;
    }
    if (*text == '"') {
      for (++text; *text && *text != '"'; ++text) {
      }
      return *text ? text + 1 : text;
    }
    return text;
  default:
    return text + 1;
  }
}

/// Whether the single types at `left` and `right` pass the same way.
bool typesAgree(const char* left, const char* right) {
  left = skipQualifiers(left);
  right = skipQualifiers(right);
  if (*left != *right) {
    // A C string is a pointer to characters, whichever way it is written.
    return (*left == '^' && *right == '*') || (*left == '*' && *right == '^');
  }
  if (*left != '{' && *left != '(' && *left != '[') {
    return true;
  }
  const char* const leftEnd = skipType(left);
  const char* const rightEnd = skipType(right);
  if (leftEnd - left != rightEnd - right) {
    return false;
  }
  for (; left != leftEnd; ++left, ++right) {
    if (*left != *right) {
      return false;
    }
  }
  return true;
}

} // namespace

bool encodingsAgree(const char* left, const char* right) {
  while (*left && *right) {
    if (!typesAgree(left, right)) {
      return false;
    }
    left = skipNumber(skipType(left));
    right = skipNumber(skipType(right));
  }
  return !*left && !*right;
}

void checkSend(Object receiver, SEL selector, const char* expected) {
  const Class cls = classOf(receiver);
  objc_method* method = class_getInstanceMethod(cls.rawClass(), selector.raw);
  const char* actual = method ? method_getTypeEncoding(method) : nullptr;
  if (!actual || encodingsAgree(expected, actual)) {
    return;
  }
  const bool toClass = class_isMetaClass(cls.rawClass());
  raiseInconsistency({"invalid message send to ", toClass ? "+[" : "-[", cls.name(), " ", selector.name(),
                      "]: sent as ", expected, ", but the method is ", actual});
}

void checkOverride(Class superclass, const char* className, SEL selector, const char* declared) {
  objc_method* method = class_getInstanceMethod(superclass.rawClass(), selector.raw);
  const char* inherited = method ? method_getTypeEncoding(method) : nullptr;
  if (!inherited || encodingsAgree(declared, inherited)) {
    return;
  }
  const bool isClassMethod = class_isMetaClass(superclass.rawClass());
  raiseInconsistency({"invalid override ", isClassMethod ? "+[" : "-[", className, " ", selector.name(),
                      "]: declared as ", declared, ", but ", superclass.name(), " has it as ", inherited});
}

} // namespace qvsb
