#include "../platform/Foundation/NSArray.hpp"
#include "../platform/Foundation/NSFastEnumeration.hpp"
#include "../platform/Foundation/NSString.hpp"
#include "../platform/Zorbel/Zorbel.hpp"
#include "UserInterfaceSandbox.hpp"

namespace qvsb {

namespace {

void sb_setMenuItems(Object self, SEL, NSArray items) {
  Zorbel::wrapperLogAtLevel_format(4, "Setting menu items:"_ns);
  anyOf(items, [](Object item) {
    Zorbel::wrapperLogAtLevel_format(4, "title: %@ action: %@"_ns, send<NSString>(item, "title"_sel),
                                     NSStringFromSelector(send<SEL>(item, "action"_sel)));
    return false;
  });
  send<void>(self, "sb_setMenuItems:"_sel, items);
}

constexpr Hook hooks[] = {
    hook<&sb_setMenuItems>("setMenuItems:", "sb_setMenuItems:"),
};

} // namespace

constinit const HookGroup UIMenuControllerSandbox{"UIMenuControllerSandboxInit", "UIMenuController",
                                                  HookedMethods::instance, hooks};

} // namespace qvsb

void UIMenuControllerSandboxInit() {
  using namespace qvsb;
  installHooks(UIMenuControllerSandbox, "Sandboxing UIMenuController"_ns);
}
