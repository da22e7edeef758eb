// An app's preferences: Library/Preferences/<bundle identifier>.plist in its container.
#import <Foundation/Foundation.h>

#import <QVDevice/QVDevice.h>

#include <objc/runtime.h>

#include "ReplacesFoundation.h"
#include "container/BundleIdentifier.h"
#include "container/Settings.h"
#include "runtime/Methods.h"

using namespace qvdevice;

namespace {

using Initialize = void (*)(Class, SEL);
using DomainNames = NSArray *(*)(NSUserDefaults *, SEL);
using Responds = BOOL (*)(NSUserDefaults *, SEL, SEL);

Initialize originalInitialize;
DomainNames originalDomainNames;
Responds originalResponds;

// Foundation names an app's domain after the process, once, when its class is first used.
void NSUserDefaults_initialize(Class self, SEL command) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  NSProcessInfo *const process = [NSProcessInfo processInfo];
  NSString *const processName = [[[process processName] copy] autorelease];
  NSString *const identifier = [NSString stringWithUTF8String:bundleIdentifier().c_str()];
  if ([identifier length]) [process setProcessName:identifier];
  originalInitialize(self, command);
  [process setProcessName:processName];
  [pool drain];
}

// The global domain is the system's: an app reads it and has no way to change or remove it.
NSArray *NSUserDefaults_persistentDomainNames(NSUserDefaults *self, SEL command) {
  if (!settings().persistentDomainNames) [self doesNotRecognizeSelector:command];
  NSMutableArray *const names = [NSMutableArray arrayWithArray:originalDomainNames(self, command)];
  [names removeObject:NSGlobalDomain];
  return names;
}

BOOL NSUserDefaults_respondsToSelector(NSUserDefaults *self, SEL command, SEL selector) {
  if (!settings().persistentDomainNames && sel_isEqual(selector, @selector(persistentDomainNames))) return NO;
  return originalResponds(self, command, selector);
}

// By name: this runs before the selectors that this file spells are known to the runtime.
template <class Function> Function replace(Class cls, const char *name, Function replacement) {
  const SEL selector = sel_registerName(name);
  const Method method = class_getInstanceMethod(cls, selector);
  const auto original = implementationAs<Function>(method_getImplementation(method));
  class_replaceMethod(cls, selector, asImplementation(replacement), method_getTypeEncoding(method));
  return original;
}

__attribute__((constructor(102))) void putTheAppsPreferencesIntoItsContainer() {
  Class const cls = objc_getClass("NSUserDefaults");
  originalInitialize = replace<Initialize>(object_getClass(cls), "initialize", NSUserDefaults_initialize);
  originalDomainNames = replace<DomainNames>(cls, "persistentDomainNames", NSUserDefaults_persistentDomainNames);
  originalResponds = replace<Responds>(cls, "respondsToSelector:", NSUserDefaults_respondsToSelector);
}

} // namespace
