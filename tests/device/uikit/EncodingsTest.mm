#import <CoreData/CoreData.h>
#import <UIKit/UIKit.h>

#include <gtest/gtest.h>
#include <objc/runtime.h>

#include <string>
#include <vector>

namespace {

std::string typeOf(const char *className, const char *selector, bool ofClass = false) {
  Class cls = objc_getClass(className);
  if (ofClass) cls = object_getClass((id)cls);
  const Method method = class_getInstanceMethod(cls, sel_registerName(selector));
  return method ? method_getTypeEncoding(method) : "(missing)";
}

struct Expected {
  const char *className;
  const char *selector;
  const char *type;
};

// As Debian's own Foundation, compiled by GCC, spells them; setAttributes is the phone's with this runtime's BOOL.
TEST(Encodings, FoundationsMethodsKeepTheirTypes) {
  const std::vector<Expected> expected = {
      {"NSData", "writeToFile:atomically:", "C28@0:8@16C24"},
      {"NSData", "writeToURL:atomically:", "C28@0:8@16C24"},
      {"NSData", "writeToFile:options:error:", "C40@0:8@16Q24^@32"},
      {"NSData", "writeToURL:options:error:", "C40@0:8@16Q24^@32"},
      {"NSDictionary", "writeToFile:atomically:", "C28@0:8@16C24"},
      {"NSDictionary", "writeToURL:atomically:", "C28@0:8@16C24"},
      {"NSArray", "writeToFile:atomically:", "C28@0:8@16C24"},
      {"NSArray", "writeToURL:atomically:", "C28@0:8@16C24"},
      {"NSString", "writeToFile:atomically:encoding:error:", "C40@0:8@16C24I28^@32"},
      {"NSString", "writeToURL:atomically:encoding:error:", "C40@0:8@16C24I28^@32"},
      {"NSFileManager", "createDirectoryAtURL:withIntermediateDirectories:attributes:error:", "C44@0:8@16C24@28^@36"},
      {"NSFileManager", "createDirectoryAtPath:withIntermediateDirectories:attributes:error:", "C44@0:8@16C24@28^@36"},
      {"NSFileManager", "createFileAtPath:contents:attributes:", "C40@0:8@16@24@32"},
      {"NSFileManager", "setAttributes:ofItemAtPath:error:", "C40@0:8@16@24^@32"},
      {"NSFileManager", "attributesOfItemAtPath:error:", "@32@0:8@16^@24"},
      {"NSFileWrapper", "writeToURL:options:originalContentsURL:error:", "C48@0:8@16Q24@32^@40"},
  };
  for (const Expected &each : expected)
    EXPECT_EQ(typeOf(each.className, each.selector), each.type) << each.selector;
  EXPECT_EQ(typeOf("NSKeyedArchiver", "archiveRootObject:toFile:", true), "C32@0:8@16@24");
}

TEST(Encodings, UIKitsAndCoreDatasMethodsHaveThePlatformsTypes) {
  const std::vector<Expected> expected = {
      {"UIDocument", "saveToURL:forSaveOperation:completionHandler:", "v40@0:8@16q24@?32"},
      {"UIDocument", "writeContents:andAttributes:safelyToURL:forSaveOperation:error:", "C56@0:8@16@24@32q40^@48"},
      {"UIDocument", "writeContents:toURL:forSaveOperation:originalContentsURL:error:", "C56@0:8@16@24q32@40^@48"},
      {"UIDocument", "contentsForType:error:", "@32@0:8@16^@24"},
      {"NSPersistentStoreCoordinator",
       "addPersistentStoreWithType:configuration:URL:options:error:", "@56@0:8@16@24@32@40^@48"},
      {"UIApplication", "setDelegate:", "v24@0:8@16"},
      {"UIApplication", "delegate", "@16@0:8"},
      {"UIApplication", "_setDelegate:assumeOwnership:", "v28@0:8@16C24"},
      {"UIApplication", "sendEvent:", "v24@0:8@16"},
      {"UIApplication", "openURL:", "C24@0:8@16"},
      {"UIApplication", "applicationState", "q16@0:8"},
      {"UIApplication", "sendAction:to:from:forEvent:", "C48@0:8:16@24@32@40"},
      {"UIApplication", "terminateWithSuccess", "v16@0:8"},
      {"UIEvent", "allTouches", "@16@0:8"},
      {"UITouch", "locationInView:", "{CGPoint=dd}24@0:8@16"},
      {"UIResponder", "touchesBegan:withEvent:", "v32@0:8@16@24"},
      {"UIResponder", "textInputMode", "@16@0:8"},
      {"UIResponder", "becomeFirstResponder", "C16@0:8"},
      {"UITextInputMode", "primaryLanguage", "@16@0:8"},
      {"UIKeyboardInputMode", "identifier", "@16@0:8"},
      {"UIControl", "addTarget:action:forControlEvents:", "v40@0:8@16:24Q32"},
      {"UIView", "endEditing:", "C20@0:8C16"},
      {"UIView", "hitTest:withEvent:", "@40@0:8{CGPoint=dd}16@32"},
      {"UIWindow", "sendEvent:", "v24@0:8@16"},
      {"UINavigationController", "viewControllers", "@16@0:8"},
      {"UIView", "frame", "{CGRect={CGPoint=dd}{CGSize=dd}}16@0:8"},
      {"UIView", "setFrame:", "v48@0:8{CGRect={CGPoint=dd}{CGSize=dd}}16"},
      {"UIWindow", "setWindowLevel:", "v24@0:8d16"},
      {"UIViewController", "supportedInterfaceOrientations", "Q16@0:8"},
  };
  for (const Expected &each : expected)
    EXPECT_EQ(typeOf(each.className, each.selector), each.type) << each.selector;
}

} // namespace
