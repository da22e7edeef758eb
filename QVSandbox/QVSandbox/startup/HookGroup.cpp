#include "HookGroup.hpp"

#include "../platform/Foundation/NSException.hpp"
#include "../platform/Zorbel/Zorbel.hpp"
#include "../platform/objc/exception.hpp"
#include "NSObject+QVSBJRSwizzle.hpp"

namespace qvsb {

namespace {

bool isPassedOver(const Hook& hook, Class cls) {
  return hook.presence == Presence::ifPresent &&
         !send<BOOL>(cls, "instancesRespondToSelector:"_sel, selector(hook.selector));
}

void exchange(const HookGroup& group, Class cls, const Hook& hook) {
  if (isPassedOver(hook, cls)) {
    return;
  }
  const SEL original = selector(hook.selector);
  const SEL replacement = selector(hook.replacement.selector);
  NSError error;
  // Installers of class methods ask for no error: their exception carries a nil description.
  const BOOL exchanged = group.kind == HookedMethods::ofClass
                             ? qvsbjr_swizzleClassMethod(cls, original, replacement, nullptr)
                             : qvsbjr_swizzleMethod(cls, original, replacement, &error);
  if (!exchanged) {
    NSException::raise_format("HookException"_ns, "%@"_ns, error.localizedDescription());
  }
}

} // namespace

void addReplacements(const HookGroup& group) {
  const Class cls(objc_lookUpClass(group.replacementsIn ? group.replacementsIn : group.className));
  if (!cls) {
    return; // the installer will say so
  }
  const Class owner = group.kind == HookedMethods::ofClass ? classOf(cls) : cls;
  for (const Hook& hook : group.hooks) {
    addMethods(owner, {&hook.replacement, 1});
  }
}

void installHooks(const HookGroup& group, NSString startLine) {
  Zorbel::wrapperLogAtLevel_format(3, startLine);
  const Class cls(objc_lookUpClass(group.className));
  tryCatch(
      [&] {
        for (const Hook& hook : group.hooks) {
          exchange(group, cls, hook);
        }
      },
      [&](Object raised) -> bool {
        if (!NSObject::from(raised).isKindOfClass(NSException::classObject())) {
          return false;
        }
        const NSException exception = NSException::from(raised);
        Zorbel::wrapperLogAtLevel_format(0, "%s: Caught %@: %@"_ns, group.installer, exception.name(),
                                         exception.reason());
        return true;
      });
}

} // namespace qvsb
