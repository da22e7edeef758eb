#include "PasscodeExtensionRequest.hpp"

#include "../platform/Foundation/NSBundle.hpp"
#include "../platform/Foundation/NSItemProvider.hpp"

namespace qvsb {

namespace {

/// The management app's private pasteboard type, by which its extension finds the request.
NSString requestType() { return "com.zorbel.passcodeextension.data"_ns; }

} // namespace

void addAppIdentity(NSMutableDictionary request, NSData icon) {
  const NSBundle bundle = NSBundle::mainBundle();
  const NSDictionary info = bundle.infoDictionary();
  Object name = info.objectForKey("CFBundleDisplayName"_ns);
  if (!name) {
    name = info.objectForKey("CFBundleName"_ns);
  }
  request.setValue_forKey(name, "AppName"_ns);
  request.setValue_forKey(icon, "AppIcon"_ns);
  request.setValue_forKey(bundle.bundleIdentifier(), "BundleId"_ns);
}

NSExtensionItem requestItem(NSMutableDictionary request) {
  const auto provider =
      Strong<Object>::adopt(NSItemProvider::alloc().initWithItem_typeIdentifier(request, requestType()));
  auto item = Strong<NSExtensionItem>::adopt(NSExtensionItem::alloc().init());
  item->setAttachments(NSArray::arrayWithObject(provider.get()));
  return item.autorelease();
}

} // namespace qvsb
