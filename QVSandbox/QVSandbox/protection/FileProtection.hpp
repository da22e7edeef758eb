// The hooks that raise the protection of everything that the host app writes, one group a platform class, and their
// installers. Each replacement lets the platform write first, with the arguments as they came, and protects what then
// stands at the path; the store coordinator alone has its options changed before the call. No hook changes a result.
#pragma once

#include "../startup/HookGroup.hpp"

namespace qvsb {

extern const HookGroup NSArraySandbox;
extern const HookGroup NSDataSandbox;
extern const HookGroup NSDictionarySandbox;
extern const HookGroup NSFileManagerSandbox;
extern const HookGroup NSFileWrapperSandbox;
extern const HookGroup NSKeyedArchiverSandbox;
extern const HookGroup NSPersistentStoreCoordinatorSandbox;
extern const HookGroup NSStringSandbox;
extern const HookGroup UIDocumentSandbox;

} // namespace qvsb

QVSB_EXPORT void NSArraySandboxInit();
QVSB_EXPORT void NSDataSandboxInit();
QVSB_EXPORT void NSDictionarySandboxInit();
QVSB_EXPORT void NSFileManagerSandboxInit();
QVSB_EXPORT void NSFileWrapperSandboxInit();
QVSB_EXPORT void NSKeyedArchiverSandboxInit();
QVSB_EXPORT void NSPersistentStoreCoordinatorSandboxInit();
QVSB_EXPORT void NSStringSandboxInit();
QVSB_EXPORT void UIDocumentSandboxInit();
