#include "Protection.h"

#include <dlfcn.h>
#include <objc/runtime.h>

namespace {

struct Hooked {
  const char *className;
  const char *selector;
  bool isClassMethod = false;
};

// Everything that the library hooks for the protection of files.
const Hooked hooked[] = {
    {"NSData", "writeToFile:atomically:"},
    {"NSData", "writeToURL:atomically:"},
    {"NSData", "writeToFile:options:error:"},
    {"NSData", "writeToURL:options:error:"},
    {"NSDictionary", "writeToFile:atomically:"},
    {"NSDictionary", "writeToURL:atomically:"},
    {"NSArray", "writeToFile:atomically:"},
    {"NSArray", "writeToURL:atomically:"},
    {"NSString", "writeToFile:atomically:encoding:error:"},
    {"NSString", "writeToURL:atomically:encoding:error:"},
    {"NSKeyedArchiver", "archiveRootObject:toFile:", true},
    {"NSFileManager", "createDirectoryAtURL:withIntermediateDirectories:attributes:error:"},
    {"NSFileManager", "createDirectoryAtPath:withIntermediateDirectories:attributes:error:"},
    {"NSFileManager", "createFileAtPath:contents:attributes:"},
    {"NSFileManager", "setAttributes:ofItemAtPath:error:"},
    {"NSFileWrapper", "writeToURL:options:originalContentsURL:error:"},
    {"UIDocument", "saveToURL:forSaveOperation:completionHandler:"},
    {"UIDocument", "writeContents:andAttributes:safelyToURL:forSaveOperation:error:"},
    {"UIDocument", "writeContents:toURL:forSaveOperation:originalContentsURL:error:"},
    {"NSPersistentStoreCoordinator", "addPersistentStoreWithType:configuration:URL:options:error:"},
};

Method find(const Hooked &hook, const std::string &prefix) {
  Class cls = objc_getClass(hook.className);
  if (hook.isClassMethod) cls = object_getClass(cls);
  return class_getInstanceMethod(cls, sel_registerName((prefix + hook.selector).c_str()));
}

bool isInLibrary(Method method) {
  Dl_info info;
  return dladdr(reinterpret_cast<void *>(method_getImplementation(method)), &info) != 0 &&
         std::string(info.dli_fname).find("libQVSandbox") != std::string::npos;
}

} // namespace

TEST(Installers, AllTwentyMethodsRunTheLibrarysCodeAndTheirPrefixedNamesThePlatforms) {
  ASSERT_EQ(std::size(hooked), 20u);
  for (const Hooked &hook : hooked) {
    const std::string name = std::string(hook.className) + " " + hook.selector;
    const Method platform = find(hook, "");
    const Method prefixed = find(hook, "sb_");
    ASSERT_TRUE(platform != nullptr && prefixed != nullptr) << name;
    EXPECT_TRUE(isInLibrary(platform)) << name;
    EXPECT_FALSE(isInLibrary(prefixed)) << name;
    EXPECT_STREQ(method_getTypeEncoding(platform), method_getTypeEncoding(prefixed)) << name;
  }
}
