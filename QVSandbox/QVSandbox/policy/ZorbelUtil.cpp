#include "ZorbelUtil.hpp"

#include "../Extension/QVSBPasscodeExtensionManager.hpp"
#include "../platform/Foundation/NSFastEnumeration.hpp"
#include "../platform/Foundation/NSSet.hpp"
#include "../platform/UIKit/UIActivity.hpp"
#include "../platform/objc/exception.hpp"
#include "AppIdentifier.hpp"
#include "OpenInTargets.hpp"
#include "ZorbelUtil+Pasteboard.hpp"
#include "ZorbelUtil+Wipe.hpp"
#include "ZorbelUtilState.hpp"

namespace qvsb {

namespace {

/// The shared instance; never released.
constinit ZorbelUtil _instance;

} // namespace

void ZorbelUtilState::initialize(Class self, SEL) {
  // A subclass, when it is first used, comes here too.
  [[maybe_unused]] static const bool once = [self] {
    _instance = send<ZorbelUtil>(send<ZorbelUtil>(self, "alloc"_sel), "init"_sel);
    return true;
  }();
}

ZorbelUtil ZorbelUtilState::instance(Class, SEL) { return _instance; }

Object ZorbelUtilState::init() {
  // Somebody else's alloc and init gives neither the shared object nor a second one that is of use.
  if (_instance) {
    return self();
  }
  const auto made = super<Object>("init"_sel);
  if (made) {
    pasteboardSnapshot_ = NSArray::array();
  }
  return made;
}

Strong<Zorbel> ZorbelUtilState::readyZorbel() const {
  Strong<Zorbel> zorbel = zorbel_.lock();
  return zorbel->isReady() ? zorbel : Strong<Zorbel>();
}

BOOL ZorbelUtilState::allowsPasteboard() const {
  const PasteboardPolicy policy = readyZorbel()->pasteboardPolicy();
  return policy == PasteboardPolicy::authorized || policy == PasteboardPolicy::secureCopy;
}

BOOL ZorbelUtilState::allowsPrinting() const { return readyZorbel()->printPolicy() == PrintPolicy::authorized; }

BOOL ZorbelUtilState::allowsOpenInWithAppId(NSString appId) const {
  switch (readyZorbel()->openInPolicy()) {
  case OpenInPolicy::authorized:
    return YES;
  case OpenInPolicy::whitelist:
    return whitelistApprovedAppId(appId);
  default:
    return NO;
  }
}

BOOL ZorbelUtilState::whitelistApprovedAppId(NSString appId) const {
  const Strong<Zorbel> zorbel = readyZorbel();
  const NSObject whitelist = zorbel->openInWhitelist();
  if (!whitelist) {
    return NO;
  }
  StringReader reader;
  if (!reader.open(appId)) {
    return NO;
  }
  const AppIdentifier identifier(reader);
  return anyOf(whitelist, [&](Object pattern) { return reader.open(pattern) && identifier.matches(reader); });
}

BOOL ZorbelUtilState::doesAppID_matchPattern(NSString appId, NSString pattern) const {
  StringReader reader;
  if (!reader.open(appId)) {
    return NO;
  }
  const AppIdentifier identifier(reader);
  return reader.open(pattern) && identifier.matches(reader);
}

NSArray ZorbelUtilState::mergeExcludedActivityTypes(NSArray types) const {
  const NSMutableSet excluded = NSMutableSet::from(NSMutableSet::set());
  if (types) {
    excluded.addObjectsFromArray(types);
  }
  if (!allowsPasteboard()) {
    excluded.addObject(UIActivityTypeCopyToPasteboard());
  }
  if (!allowsPrinting()) {
    excluded.addObject(UIActivityTypePrint());
  }
  // No identifier at all is allowed only when every one is, which spares the asking.
  if (!allowsOpenInWithAppId(nullptr)) {
    for (const NSString target : openInTargets()) {
      if (!allowsOpenInWithAppId(target)) {
        excluded.addObject(target);
      }
    }
  }
  return excluded.allObjects();
}

void ZorbelUtilState::resetInactivity(UIEvent event) const { readyZorbel()->sendEvent(event); }

void ZorbelUtilState::wipeApplication() const {
  const Class cls = ZorbelUtil::classObject();
  // The host hears of its preferences being removed, and may raise. Its files go all the same.
  tryFinally(
      [&] {
        tryFinally([&] { send<void>(cls, "_cleanUpKeychain"_sel); },
                   [&] { send<void>(cls, "_cleanUpPreferences"_sel); });
      },
      [&] { send<void>(cls, "_cleanUpFileSystem"_sel); });
}

// The passcode extension is the SDK's way to become ready, so nothing here asks whether it is.

BOOL ZorbelUtilState::isPasscodeExtensionActive() const {
  return QVSBPasscodeExtensionManager::sharedInstance().isPasscodeExtensionActive();
}

BOOL ZorbelUtilState::canAppDisplayPasscodeExtension() const {
  return QVSBPasscodeExtensionManager::sharedInstance().canAppDisplayPasscodeExtension();
}

void ZorbelUtilState::startPasscodeExtension() const { QVSBPasscodeExtensionManager::sharedInstance().start(); }

void ZorbelUtilState::stopPasscodeExtension() const { QVSBPasscodeExtensionManager::sharedInstance().stop(); }

NSDictionary ZorbelUtilState::getAppInfo() const { return zorbel_.lock()->getAppInfo(); }

void ZorbelUtilState::postPasscodeExtensionResult(NSDictionary result) const {
  zorbel_.lock()->postPasscodeExtensionResult(result);
}

Class registerZorbelUtil() {
  const Class cls = registerClass<ZorbelUtilState>();
  addCategory(ZorbelUtilPasteboard);
  addCategory(ZorbelUtilWipe);
  return cls;
}

} // namespace qvsb
