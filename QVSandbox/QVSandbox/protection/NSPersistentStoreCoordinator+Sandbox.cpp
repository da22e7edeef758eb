#include "../platform/CoreData/NSPersistentStoreCoordinator.hpp"
#include "FileProtection.hpp"
#include "NSFileManager+Helpers.hpp"

namespace qvsb {

namespace {

NSPersistentStore sb_addPersistentStore(NSPersistentStoreCoordinator self, SEL, NSString type, NSString configuration,
                                        NSURL url, NSDictionary options, NSError* error) {
  // Only a class that says "none" is raised. A store without the key gets the platform's default, which protects; a
  // file without the attribute has no protection at all. Hence the difference from the other hooks.
  Strong<NSDictionary> chosen = options;
  if (NSFileProtectionNone().isEqual(options.objectForKey(NSPersistentStoreFileProtectionKey()))) {
    const Strong<NSMutableDictionary> raised = options.mutableCopy();
    raised->setObject_forKey(NSFileProtectionCompleteUntilFirstUserAuthentication(),
                             NSPersistentStoreFileProtectionKey());
    chosen = raised.get();
  }
  return send<NSPersistentStore>(self, "sb_addPersistentStoreWithType:configuration:URL:options:error:"_sel, type,
                                 configuration, url, chosen.get(), error);
}

constexpr Hook hooks[] = {
    hook<&sb_addPersistentStore>("addPersistentStoreWithType:configuration:URL:options:error:",
                                 "sb_addPersistentStoreWithType:configuration:URL:options:error:"),
};

} // namespace

constinit const HookGroup NSPersistentStoreCoordinatorSandbox{
    "NSPersistentStoreCoordinatorSandboxInit", "NSPersistentStoreCoordinator", HookedMethods::instance, hooks};

} // namespace qvsb

void NSPersistentStoreCoordinatorSandboxInit() {
  using namespace qvsb;
  installHooks(NSPersistentStoreCoordinatorSandbox, "Sandboxing NSPersistentStoreCoordinator"_ns);
}
