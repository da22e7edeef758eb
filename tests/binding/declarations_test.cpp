// Every operation that the library declares of the platform, compared with the running platform's own method.
#define QVSB_DECLARATION_TABLE

#include "PlatformHeaders.hpp"

#include <gtest/gtest.h>

using qvsb::Declaration;

extern "C" {
extern Declaration (*const __start_qvsb_declared[])();
extern Declaration (*const __stop_qvsb_declared[])();
}

namespace {

/// What is wrong with the declaration, or nothing.
std::string fault(const Declaration& declared) {
  const std::string name =
      std::string(declared.isClassMethod ? "+[" : "-[") + declared.className + " " + declared.selector + "]";
  objc_class* cls = objc_lookUpClass(declared.className);
  if (!cls) {
    return name + ": the platform has no such class";
  }
  if (declared.isClassMethod) {
    cls = object_getClass(reinterpret_cast<objc_object*>(cls));
  }
  objc_method* method = class_getInstanceMethod(cls, sel_registerName(declared.selector));
  if (!method) {
    return name + ": the platform has no such method";
  }
  const char* actual = method_getTypeEncoding(method);
  if (!qvsb::encodingsAgree(declared.types, actual)) {
    return name + ": declared " + declared.types + ", the platform has " + actual;
  }
  return "";
}

} // namespace

TEST(Declarations, AreWhatTheRunningPlatformHas) {
  int count = 0;
  for (const auto* entry = __start_qvsb_declared; entry != __stop_qvsb_declared; ++entry) {
    EXPECT_EQ(fault((*entry)()), "");
    ++count;
  }
  EXPECT_GE(count, 20);
}

TEST(Declarations, ThatHaveDriftedAreFoundByName) {
  EXPECT_EQ(fault({"NSFileManager", "fileExistsAtPath:", false, "v24@0:8@16"}),
            "-[NSFileManager fileExistsAtPath:]: declared v24@0:8@16, the platform has C24@0:8@16");
  EXPECT_EQ(fault({"NSFileManager", "fileExistsAtPth:", false, "C24@0:8@16"}),
            "-[NSFileManager fileExistsAtPth:]: the platform has no such method");
  EXPECT_EQ(fault({"NSFileManger", "defaultManager", true, "@16@0:8"}),
            "+[NSFileManger defaultManager]: the platform has no such class");
}
