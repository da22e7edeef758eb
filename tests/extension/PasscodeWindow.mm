#include "PasscodeWindow.h"

#include <objc/runtime.h>

namespace {

NSDictionary *information = nil;
NSString *bundleIdentifier = nil;

NSDictionary *infoDictionary(id, SEL) { return information; }
id infoForKey(id, SEL, NSString *key) { return [information objectForKey:key]; }
NSString *identifierOfBundle(id, SEL) { return bundleIdentifier; }

void notePresent(id self, SEL, UIViewController *controller, BOOL animated, id completion) {
  note(std::string(object_getClassName(self)) + " presents " + object_getClassName(controller) +
       (animated ? ", animated" : "") + (completion ? ", with a completion" : ""));
}

} // namespace

void PasscodeWindow::SetUp() {
  ExtensionTest::SetUp();
  replaceMethod([NSBundle class], "infoDictionary", reinterpret_cast<IMP>(&infoDictionary));
  replaceMethod([NSBundle class], "objectForInfoDictionaryKey:", reinterpret_cast<IMP>(&infoForKey));
  replaceMethod([NSBundle class], "bundleIdentifier", reinterpret_cast<IMP>(&identifierOfBundle));
  setInfo(@{@"CFBundleDisplayName" : @"Shown", @"CFBundleName" : @"Plain"});
  setBundleIdentifier(@"com.example.host");
  replaceMethod([UIViewController class],
                "presentViewController:animated:completion:", reinterpret_cast<IMP>(&notePresent));
  controller = [[windowControllerClass() alloc] init];
  // As the manager does it at each start.
  [manager() setAppInfo:sdk->appInfo];
  take();
}

void PasscodeWindow::TearDown() {
  [controller release];
  ExtensionTest::TearDown();
}

NSDictionary *PasscodeWindow::request() {
  NSArray *const items = [[controller extensionViewController] inputItems];
  EXPECT_EQ([items count], 1u);
  NSExtensionItem *const item = [items firstObject];
  EXPECT_EQ([item class], [NSExtensionItem class]);
  EXPECT_EQ([[item attachments] count], 1u);
  NSItemProvider *const provider = [[item attachments] firstObject];
  EXPECT_EQ([[provider registeredTypeIdentifiers] count], 1u);
  NSString *const type = [[provider registeredTypeIdentifiers] firstObject];
  EXPECT_TRUE([type hasSuffix:@".passcodeextension.data"]) << support::text(type);
  __block NSDictionary *dictionary = nil;
  dispatch_semaphore_t const loaded = dispatch_semaphore_create(0);
  [provider loadItemForTypeIdentifier:type options:nil completionHandler:^(id loadedItem, NSError *error) {
    EXPECT_EQ(error, nil);
    dictionary = [loadedItem retain];
    dispatch_semaphore_signal(loaded);
  }];
  dispatch_semaphore_wait(loaded, DISPATCH_TIME_FOREVER);
  dispatch_release(loaded);
  return [dictionary autorelease];
}

void PasscodeWindow::setInfo(NSDictionary *info) { information = [info retain]; }
void PasscodeWindow::setBundleIdentifier(NSString *identifier) { bundleIdentifier = [identifier retain]; }
