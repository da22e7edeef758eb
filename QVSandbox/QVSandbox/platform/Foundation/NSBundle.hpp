#pragma once

#include "NSDictionary.hpp"

namespace qvsb {

class NSBundle : public NSObject {
  QVSB_HANDLE(NSBundle, NSObject)
  QVSB_CLASS_METHOD(NSBundle, mainBundle, "mainBundle")
  /// What its Info.plist holds.
  QVSB_METHOD(NSDictionary, infoDictionary, "infoDictionary")
  QVSB_METHOD(NSString, bundleIdentifier, "bundleIdentifier")
  QVSB_METHOD(NSString, executablePath, "executablePath")
};

} // namespace qvsb
