// The hooks of the edit menu and of printing.
#pragma once

#include "../startup/HookGroup.hpp"

namespace qvsb {

extern const HookGroup UICalloutBarSandbox;
extern const HookGroup UIMenuControllerSandbox;
extern const HookGroup UIPrintInteractionControllerSandbox;

} // namespace qvsb

QVSB_EXPORT void UICalloutBarSandboxInit();
QVSB_EXPORT void UIMenuControllerSandboxInit();
QVSB_EXPORT void UIPrintInteractionControllerSandboxInit();
