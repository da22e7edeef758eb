// What an installer (`<Class>SandboxInit`) is made of: the hooks of one platform class, as data, and the one way in
// which they are installed.
#pragma once

#include <span>

#include "../platform/Foundation/NSString.hpp"
#include "../platform/objc/method.hpp"

namespace qvsb {

/// Whether a platform release may lack the hooked method.
enum class Presence { always, ifPresent };

/// One hooked method: the platform's selector, and the replacement with the selector under which it is kept and under
/// which, after the exchange, the platform's implementation is reached.
struct Hook {
  const char* selector;
  MethodEntry replacement;
  Presence presence = Presence::always;
};

/// `hook<sb_length>("length", "sb_length")`, with `NSUInteger sb_length(NSString self, SEL)`.
template <auto Replacement> consteval Hook hook(const char* selector, const char* replacementSelector) {
  return {selector, method<Replacement>(replacementSelector)};
}

/// The same for a method that some platform releases do not have: there it is passed over in silence.
template <auto Replacement> consteval Hook hookIfPresent(const char* selector, const char* replacementSelector) {
  return {selector, method<Replacement>(replacementSelector), Presence::ifPresent};
}

enum class HookedMethods { instance, ofClass };

/// The hooks that one installer installs on one platform class, in order.
struct HookGroup {
  /// The installer's own function name, for its log line.
  const char* installer;
  const char* className;
  HookedMethods kind;
  std::span<const Hook> hooks;
  /// The superclass to which the replacements are added where the hooked class is one that apps do not name; otherwise
  /// they are added to the hooked class.
  const char* replacementsIn = nullptr;
};

/// Adds the replacements, so that they are there to be found whether or not the exchange succeeds. One whose name the
/// class has already is not added: the exchange then refuses it, unless the other has the very same signature, and with
/// that the exchange is made with the other. Nobody but this library has reason to use the prefix.
void addReplacements(const HookGroup& group);

/// Logs `startLine` at level 3, then exchanges the pairs in order. The first that fails is logged at level 0, and the
/// pairs after it are left alone. No NSException of an exchange leaves it.
void installHooks(const HookGroup& group, NSString startLine);

} // namespace qvsb
