// The hooks that keep data from leaving the app by way of the share sheet and of the list of apps that open a document.
#pragma once

#include "../startup/HookGroup.hpp"

namespace qvsb {

extern const HookGroup UIActivityViewControllerSandbox;
/// What the hooks ask the share sheet itself.
extern const Category UIActivityViewControllerFiltering;
extern const HookGroup UIDocumentInteractionControllerSandbox;

} // namespace qvsb

QVSB_EXPORT void UIActivityViewControllerSandboxInit();
QVSB_EXPORT void UIDocumentInteractionControllerSandboxInit();
