// Declaring the platform's classes. A header under platform/ reads:
//
//   class NSFileManager : public NSObject {
//     QVSB_HANDLE(NSFileManager, NSObject)
//     QVSB_CLASS_METHOD(NSFileManager, defaultManager, "defaultManager")
//     QVSB_METHOD(BOOL, fileExistsAtPath, "fileExistsAtPath:", NSString)
//   };
//
// Each operation says its signature once: result, C++ name (the selector with `_` for `:`), selector, arguments. It
// becomes a member function whose arguments convert to the declared types. Types that a header only names need not be
// complete until an operation is called, so headers may refer to each other.
//
// With QVSB_DECLARATION_TABLE defined, every operation also leaves an entry in a table of the binary, which the test
// of the declarations walks against the running platform. Variadic operations are plain member functions on top of
// VariadicMessage and stand outside the table.
#pragma once

#include "lookup.hpp"
#include "send.hpp"

namespace qvsb {

/// One declared operation, for those who check the declarations.
struct Declaration {
  const char* className;
  const char* selector;
  bool isClassMethod;
  const char* types;
};

namespace detail {
/// Puts the encoding off to the end of the translation unit, when all the types that it names are complete.
template <class Later> struct EncodedLater {
  template <class... T> static const char* encoding() { return methodEncoding<T...>(); }
};
} // namespace detail

} // namespace qvsb

#define QVSB_HANDLE(NAME, SUPER)                                                                                       \
public:                                                                                                                \
  using Self = NAME;                                                                                                   \
  static constexpr const char* className = #NAME;                                                                      \
  constexpr NAME() = default;                                                                                          \
  constexpr NAME(std::nullptr_t) {}                                                                                    \
  constexpr explicit NAME(::qvsb::id object) : SUPER(object) {}                                                        \
  /** A cast that nothing checks, as in Objective-C. */                                                                \
  static constexpr NAME from(::qvsb::Object object) { return NAME(object.raw()); }                                     \
  /** The class, nil where the platform lacks it. */                                                                   \
  static ::qvsb::Class classObject() { return ::qvsb::classNamed<#NAME>(); }

#define QVSB_METHOD(RESULT, NAME, SELECTOR, ...)                                                                       \
  template <class... Given> auto NAME(Given... given) const {                                                          \
    return ::qvsb::Message<RESULT(__VA_ARGS__)>::send(*this, SELECTOR##_sel, given...);                                \
  }                                                                                                                    \
  QVSB_DECLARED(__COUNTER__, SELECTOR, false, RESULT __VA_OPT__(, ) __VA_ARGS__)

#define QVSB_CLASS_METHOD(RESULT, NAME, SELECTOR, ...)                                                                 \
  template <class... Given> static auto NAME(Given... given) {                                                         \
    return ::qvsb::Message<RESULT(__VA_ARGS__)>::send(classObject(), SELECTOR##_sel, given...);                        \
  }                                                                                                                    \
  QVSB_DECLARED(__COUNTER__, SELECTOR, true, RESULT __VA_OPT__(, ) __VA_ARGS__)

#if defined(QVSB_DECLARATION_TABLE)
#define QVSB_DECLARED(N, SELECTOR, ISCLASS, ...) QVSB_DECLARED_(N, SELECTOR, ISCLASS, __VA_ARGS__)
#define QVSB_DECLARED_(N, SELECTOR, ISCLASS, ...)                                                                      \
  template <class Later> static ::qvsb::Declaration declaration##N() {                                                 \
    return {className, SELECTOR, ISCLASS, ::qvsb::detail::EncodedLater<Later>::template encoding<__VA_ARGS__>()};      \
  }                                                                                                                    \
  [[gnu::used, gnu::section("qvsb_declared")]] static inline constexpr ::qvsb::Declaration (*declared##N)() =          \
      &declaration##N<void>;
#else
#define QVSB_DECLARED(N, SELECTOR, ISCLASS, ...)
#endif
