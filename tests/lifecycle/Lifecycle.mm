#include "Lifecycle.h"

#include <cstdio>
#include <cstdlib>
#include <objc/runtime.h>

void Lifecycle::SetUp() {
  pool_ = [[NSAutoreleasePool alloc] init];
  application = [[UIApplication alloc] init];
  support::clearLog();
  clearHeard();
}

void Lifecycle::TearDown() {
  [application release];
  [pool_ drain];
}

void Lifecycle::setDelegate(id delegate) {
  [application setDelegate:delegate];
  support::clearLog();
  clearHeard();
}

void Lifecycle::launch(id delegate) {
  [application setDelegate:delegate];
  [delegate application:application didFinishLaunchingWithOptions:nil];
  support::clearLog();
  clearHeard();
}

// Foundation may ask a proxy's target.
std::string shown(id object) { return support::text([NSString stringWithFormat:@"%@", object]); }

std::string picture(Class cls) {
  std::string text;
  unsigned count = 0;
  Method *const methods = class_copyMethodList(cls, &count);
  for (unsigned i = 0; i < count; ++i) {
    char line[512];
    std::snprintf(line, sizeof line, "%s %s %p\n", sel_getName(method_getName(methods[i])),
                  method_getTypeEncoding(methods[i]), reinterpret_cast<void *>(method_getImplementation(methods[i])));
    text += line;
  }
  std::free(methods);
  return text;
}

bool isGrafted(Class cls) { return class_getInstanceMethod(cls, sel_registerName("zb_markerMethod")) != nullptr; }

Lines graftLog(const std::string &className, bool hasMethods) {
  constexpr const char *grafts[][2] = {
      {"application:willFinishLaunchingWithOptions:", "C32@0:8@16@24"},
      {"application:didFinishLaunchingWithOptions:", "C32@0:8@16@24"},
      {"applicationDidBecomeActive:", "v24@0:8@16"},
      {"applicationWillResignActive:", "v24@0:8@16"},
      {"applicationWillTerminate:", "v24@0:8@16"},
      {"applicationDidEnterBackground:", "v24@0:8@16"},
      {"applicationWillEnterForeground:", "v24@0:8@16"},
      {"window", "@16@0:8"},
      {"setWindow:", "v24@0:8@16"},
      {"application:shouldAllowExtensionPointIdentifier:", nullptr},
      {"application:openURL:options:", "C40@0:8@16@24@32"},
  };
  Lines lines = {"5 UIApplicationDelegateSwizzle called for class " + className};
  for (const auto &[selector, types] : grafts) {
    if (!types) {
      lines.push_back(std::string("0 Missing implementation for zb_") + selector);
      continue;
    }
    lines.push_back(std::string("5 Swizzling ") + selector + " with zb_" + selector + " with type " + types +
                    " for Class " + className);
    lines.push_back(hasMethods ? "5 Original method exists. Swapped implementation with error: (null)"
                               : "5 Original method does not exist. Adding implementation with original selector.");
  }
  lines.push_back("5 Adding marker to class " + className);
  return lines;
}
