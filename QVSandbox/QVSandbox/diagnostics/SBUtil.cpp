#include "SBUtil.hpp"

#include <cstddef>
#include <initializer_list>
#include <vector>

#include "../platform/System/stdlib.hpp"
#include "../platform/Zorbel/Zorbel.hpp"
#include "../platform/objc/implement.hpp"
#include "typeName.hpp"

namespace qvsb {

namespace {

Strong<NSString> makeString(std::string_view text, NSStringEncoding encoding) {
  const auto fresh = NSString::from(send<Object>(NSString::classObject(), "alloc"_sel));
  return Strong<NSString>::adopt(NSString::from(
      fresh.initWithBytes_length_encoding(static_cast<const void*>(text.data()), text.size(), encoding)));
}

/// Bytes that are not UTF-8 count as one character each: a log line with strange characters beats none.
Strong<NSString> makeString(std::string_view text) {
  Strong<NSString> made = makeString(text, NSUTF8StringEncoding);
  return made ? made : makeString(text, NSISOLatin1StringEncoding);
}

std::string_view viewOf(const char* text) { return text ? std::string_view(text) : std::string_view(); }

/// The type's name, and its encoding, which was copied for us, given back.
std::string nameOfCopied(char* encoding) {
  std::string name = typeName(viewOf(encoding));
  free(encoding);
  return name;
}

std::vector<std::string_view> split(std::string_view text, char at) {
  std::vector<std::string_view> pieces;
  std::size_t start = 0;
  for (std::size_t end = text.find(at); end != std::string_view::npos; end = text.find(at, start)) {
    pieces.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  pieces.push_back(text.substr(start));
  return pieces;
}

/// The receiver and the selector come first among a method's arguments.
constexpr unsigned int kFirstDeclaredArgument = 2;

std::string signatureOf(Method listed) {
  const auto pieces = split(SEL{method_getName(listed)}.name(), ':');
  const unsigned int end = method_getNumberOfArguments(listed);
  if (end <= kFirstDeclaredArgument) {
    return std::string(pieces.front());
  }
  std::string signature;
  for (unsigned int index = kFirstDeclaredArgument; index < end; ++index) {
    const std::size_t piece = index - kFirstDeclaredArgument;
    if (piece > 0) {
      signature += ' ';
    }
    // A method added at run time may take more arguments than its selector has pieces.
    if (piece < pieces.size()) {
      signature += pieces[piece];
    }
    signature += ":(";
    signature += nameOfCopied(method_copyArgumentType(listed, index));
    signature += ')';
  }
  return signature;
}

/// The SDK's enumerations count from 0.
NSString textOf(NSInteger value, std::initializer_list<NSString> texts, NSString unknown) {
  const auto index = static_cast<std::size_t>(value); // a negative one becomes too large
  return index < texts.size() ? texts.begin()[index] : unknown;
}

class Implementation : public Implements<Implementation> {
public:
  static constexpr const char* className = "SBUtil";
  static constexpr const char* superclassName = "NSObject";

  static NSString stringForAuthState(Class, SEL, NSInteger state) {
    return textOf(state, {"Unauthorized"_ns, "Authorized"_ns, "Retired"_ns}, "Unknown Auth State"_ns);
  }

  static NSString stringForOpenInPolicy(Class, SEL, NSInteger policy) {
    return textOf(policy, {"Unauthorized"_ns, "Authorized"_ns, "Whitelist"_ns}, "Unknown OpenIn State"_ns);
  }

  static NSString stringForPrintPolicy(Class, SEL, NSInteger policy) {
    return textOf(policy, {"Unauthorized"_ns, "Authorized"_ns}, "Unknown Print State"_ns);
  }

  static NSString stringForPasteboardPolicy(Class, SEL, NSInteger policy) {
    return textOf(policy, {"Unauthorized"_ns, "Authorized"_ns, "Secure Copy"_ns}, "Unknown Pasteboard State"_ns);
  }

  static NSString stringForTypeEncoding(Class, SEL, const char* encoding) {
    return makeString(typeName(viewOf(encoding))).autorelease();
  }

  static void logMethods(Class, SEL, Method* methods, unsigned int count, NSString prefix) {
    for (unsigned int index = 0; index < count; ++index) {
      const Strong<NSString> returned = makeString(nameOfCopied(method_copyReturnType(methods[index])));
      const Strong<NSString> signature = makeString(signatureOf(methods[index]));
      Zorbel::wrapperLogAtLevel_format(4, "%@(%@)%@"_ns, prefix, returned.get(), signature.get());
    }
  }

  static void logClassFromString(Class self, SEL, const char* name) {
    const Class found(objc_getClass(name));
    if (!found) {
      Zorbel::wrapperLogAtLevel_format(0, "Class %s does not exist"_ns, name);
      return;
    }
    send<void>(self, "logClass:"_sel, found);
  }

  static void nothingOf(Class, SEL, Class) {}
  static void nothingOfSymbol(Class, SEL, const void*) {}

  static constexpr MethodEntry classMethods[] = {
      method<&Implementation::stringForAuthState>("stringForAuthState:"),
      method<&Implementation::stringForOpenInPolicy>("stringForOpenInPolicy:"),
      method<&Implementation::stringForPrintPolicy>("stringForPrintPolicy:"),
      method<&Implementation::stringForPasteboardPolicy>("stringForPasteboardPolicy:"),
      method<&Implementation::stringForTypeEncoding>("stringForTypeEncoding:"),
      method<&Implementation::logMethods>("logMethods:count:withPrefix:"),
      method<&Implementation::logClassFromString>("logClassFromString:"),
      method<&Implementation::nothingOf>("logClass:"),
      method<&Implementation::nothingOf>("logMessagesForClass:"),
      method<&Implementation::nothingOf>("logHierarchyForClass:"),
      method<&Implementation::nothingOf>("logVariablesForClass:"),
      method<&Implementation::nothingOfSymbol>("logSymbolInfo:"),
  };
};

} // namespace

Class registerSBUtil() { return registerClass<Implementation>(); }

} // namespace qvsb
