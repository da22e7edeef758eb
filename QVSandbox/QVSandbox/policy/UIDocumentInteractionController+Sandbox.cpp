#include "../platform/Foundation/NSArray.hpp"
#include "SharingSandbox.hpp"
#include "ZorbelUtil.hpp"

namespace qvsb {

namespace {

bool isAllowed(NSObject application) {
  const auto identifier = application.respondsToSelector("applicationIdentifier"_sel)
                              ? send<NSString>(application, "applicationIdentifier"_sel)
                              : NSString();
  return ZorbelUtil::instance().allowsOpenInWithAppId(identifier);
}

NSArray sb_applications(Object self, SEL, BOOL argument) {
  const auto applications = send<NSArray>(self, "sb__applications:"_sel, argument);
  // Open on purpose: a platform that builds its list in another way shows it as it is, and the log tells.
  if (!applications.isKindOfClass(NSMutableArray::classObject())) {
    Zorbel::wrapperLogAtLevel_format(0, "[UIDocumentationInteractionController _application:] has been changed!"_ns);
    return applications;
  }
  const NSMutableArray list = NSMutableArray::from(applications);
  for (NSUInteger index = 0; index < list.count();) {
    if (isAllowed(NSObject::from(list.objectAtIndex(index)))) {
      ++index;
    } else {
      list.removeObjectAtIndex(index);
    }
  }
  return list;
}

constexpr Hook hooks[] = {
    hook<&sb_applications>("_applications:", "sb__applications:"),
};

} // namespace

constinit const HookGroup UIDocumentInteractionControllerSandbox{
    "UIDocumentInteractionControllerSandboxInit", "UIDocumentInteractionController", HookedMethods::instance, hooks};

} // namespace qvsb

void UIDocumentInteractionControllerSandboxInit() {
  using namespace qvsb;
  installHooks(UIDocumentInteractionControllerSandbox, "Sandboxing UIDocumentInteractionController"_ns);
}
