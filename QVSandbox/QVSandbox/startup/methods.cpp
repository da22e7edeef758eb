#include "methods.hpp"

#include "../protection/FileProtection.hpp"
#include "../protection/NSFileManager+Helpers.hpp"
#include "NSObject+QVSBJRSwizzle.hpp"

namespace qvsb {

namespace {

constexpr const Category* categories[] = {
    &NSObjectQVSBJRSwizzle,
    &NSFileManagerHelpers,
};

constexpr const HookGroup* hookGroups[] = {
    &NSArraySandbox,
    &NSDataSandbox,
    &NSDictionarySandbox,
    &NSFileManagerSandbox,
    &NSFileWrapperSandbox,
    &NSKeyedArchiverSandbox,
    &NSPersistentStoreCoordinatorSandbox,
    &NSStringSandbox,
    &UIDocumentSandbox,
};

} // namespace

void addMethodsAndClasses() {
  for (const Category* category : categories) {
    addCategory(*category);
  }
  for (const HookGroup* group : hookGroups) {
    addReplacements(*group);
  }
}

} // namespace qvsb
