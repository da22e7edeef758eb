// ZorbelUtil's state and methods; everybody else goes through ZorbelUtil.hpp.
#pragma once

#include "../platform/objc/implement.hpp"
#include "ZorbelUtil.hpp"

namespace qvsb {

/// Main thread, except that the shared instance may be made on any.
class ZorbelUtilState : public Implements<ZorbelUtilState> {
public:
  static constexpr const char* className = "ZorbelUtil";
  static constexpr const char* superclassName = "NSObject";

  Object init();

  BOOL allowsPasteboard() const;
  BOOL allowsPrinting() const;
  BOOL allowsOpenInWithAppId(NSString appId) const;
  BOOL whitelistApprovedAppId(NSString appId) const;
  BOOL doesAppID_matchPattern(NSString appId, NSString pattern) const;
  NSArray mergeExcludedActivityTypes(NSArray types) const;

  void resetInactivity(UIEvent event) const;
  void wipeApplication() const;

  BOOL isPasscodeExtensionActive() const;
  BOOL canAppDisplayPasscodeExtension() const;
  void startPasscodeExtension() const;
  void stopPasscodeExtension() const;
  NSDictionary getAppInfo() const;
  void postPasscodeExtensionResult(NSDictionary result) const;

  Zorbel zorbel() const { return zorbel_.get(); }
  void setZorbel(Zorbel zorbel) { zorbel_ = zorbel; }
  BOOL registeredForPasteboardChangeNotification() const { return registeredForPasteboardChangeNotification_; }
  void setRegisteredForPasteboardChangeNotification(BOOL registered) {
    registeredForPasteboardChangeNotification_ = registered;
  }
  NSInteger pasteboardProxyForwardInvocationReturnAddress() const {
    return pasteboardProxyForwardInvocationReturnAddress_;
  }
  void setPasteboardProxyForwardInvocationReturnAddress(NSInteger address) {
    pasteboardProxyForwardInvocationReturnAddress_ = address;
  }
  NSArray pasteboardSnapshot() const { return pasteboardSnapshot_; }
  void setPasteboardSnapshot(NSArray items) { pasteboardSnapshot_ = items; }

  /// Makes the shared instance; the runtime's doing, before the first message to the class.
  static void initialize(Class self, SEL);
  static ZorbelUtil instance(Class, SEL);

  static constexpr MethodEntry instanceMethods[] = {
      member<&ZorbelUtilState::init>("init"),
      member<&ZorbelUtilState::allowsPasteboard>("allowsPasteboard"),
      member<&ZorbelUtilState::allowsPrinting>("allowsPrinting"),
      member<&ZorbelUtilState::allowsOpenInWithAppId>("allowsOpenInWithAppId:"),
      member<&ZorbelUtilState::whitelistApprovedAppId>("_whitelistApprovedAppId:"),
      member<&ZorbelUtilState::doesAppID_matchPattern>("_doesAppID:matchPattern:"),
      member<&ZorbelUtilState::mergeExcludedActivityTypes>("mergeExcludedActivityTypes:"),
      member<&ZorbelUtilState::resetInactivity>("resetInactivity:"),
      member<&ZorbelUtilState::wipeApplication>("wipeApplication"),
      member<&ZorbelUtilState::isPasscodeExtensionActive>("isPasscodeExtensionActive"),
      member<&ZorbelUtilState::canAppDisplayPasscodeExtension>("canAppDisplayPasscodeExtension"),
      member<&ZorbelUtilState::startPasscodeExtension>("startPasscodeExtension"),
      member<&ZorbelUtilState::stopPasscodeExtension>("stopPasscodeExtension"),
      member<&ZorbelUtilState::getAppInfo>("getAppInfo"),
      member<&ZorbelUtilState::postPasscodeExtensionResult>("postPasscodeExtensionResult:"),
      member<&ZorbelUtilState::zorbel>("zorbel"),
      member<&ZorbelUtilState::setZorbel>("setZorbel:"),
      member<&ZorbelUtilState::registeredForPasteboardChangeNotification>("registeredForPasteboardChangeNotification"),
      member<&ZorbelUtilState::setRegisteredForPasteboardChangeNotification>(
          "setRegisteredForPasteboardChangeNotification:"),
      member<&ZorbelUtilState::pasteboardProxyForwardInvocationReturnAddress>(
          "pasteboardProxyForwardInvocationReturnAddress"),
      member<&ZorbelUtilState::setPasteboardProxyForwardInvocationReturnAddress>(
          "setPasteboardProxyForwardInvocationReturnAddress:"),
  };
  static constexpr MethodEntry classMethods[] = {
      method<&ZorbelUtilState::initialize>("initialize"),
      method<&ZorbelUtilState::instance>("instance"),
  };

private:
  /// The SDK while it can be asked. Nil, whose every policy is 0, before it is set, after it has gone and as long as it
  /// is not ready. Owned, so that it stays for the length of a question.
  Strong<Zorbel> readyZorbel() const;

  /// Items, each a dictionary from pasteboard type to value; nil when they were asked for without an SDK.
  Strong<NSArray> pasteboardSnapshot_;
  BOOL registeredForPasteboardChangeNotification_ = NO;
  Weak<Zorbel> zorbel_;
  NSInteger pasteboardProxyForwardInvocationReturnAddress_ = 0;
};

} // namespace qvsb
