#include "../policy/ZorbelUtil.hpp"
#include "UserInterfaceSandbox.hpp"

namespace qvsb {

namespace {

BOOL sb_isPrintingAvailable(Class self, SEL) {
  return send<BOOL>(self, "sb_isPrintingAvailable"_sel) && ZorbelUtil::instance().allowsPrinting();
}

constexpr Hook hooks[] = {
    hook<&sb_isPrintingAvailable>("isPrintingAvailable", "sb_isPrintingAvailable"),
};

} // namespace

constinit const HookGroup UIPrintInteractionControllerSandbox{
    "UIPrintInteractionControllerSandboxInit", "UIPrintInteractionController", HookedMethods::ofClass, hooks};

} // namespace qvsb

void UIPrintInteractionControllerSandboxInit() {
  using namespace qvsb;
  installHooks(UIPrintInteractionControllerSandbox, "Sandboxing UIPrintInteractionController"_ns);
}
