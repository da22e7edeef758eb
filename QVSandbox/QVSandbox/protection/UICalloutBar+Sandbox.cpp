#include "../policy/ZorbelUtil.hpp"
#include "UserInterfaceSandbox.hpp"

namespace qvsb {

namespace {

/// The callout bar offers an action only if it finds a target for it.
Object sb_targetForAction(Object self, SEL, SEL action) {
  const auto target = send<Object>(self, "sb_targetForAction:"_sel, action);
  if (!target || ZorbelUtil::instance().allowsPasteboard()) {
    return target;
  }
  if (action == "copy:"_sel || action == "cut:"_sel) {
    Zorbel::wrapperLogAtLevel_format(3, "suppress: %@ on %@"_ns, NSStringFromSelector(action),
                                     NSStringFromClass(send<Class>(target, "class"_sel)));
    return nullptr;
  }
  return target;
}

constexpr Hook hooks[] = {
    hook<&sb_targetForAction>("targetForAction:", "sb_targetForAction:"),
};

} // namespace

// The bar's class is the platform's own: it is known by name only, and its replacement stands in a class that all know.
constinit const HookGroup UICalloutBarSandbox{"UICalloutBarSandboxInit", "UICalloutBar", HookedMethods::instance, hooks,
                                              "UIView"};

} // namespace qvsb

void UICalloutBarSandboxInit() {
  using namespace qvsb;
  installHooks(UICalloutBarSandbox, "Sandboxing UICalloutBar"_ns);
}
