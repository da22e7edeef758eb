#include "../policy/ZorbelUtil.hpp"
#include "QVZorbelDelegateState.hpp"

namespace qvsb {

void QVZorbelDelegateState::applicationDidFinishLaunchingWithOptions(NSDictionary options) {
  Zorbel::wrapperLogAtLevel_format(3, "%s"_ns, "-[QVZorbelDelegate applicationDidFinishLaunchingWithOptions:]");
  Zorbel::wrapperLogAtLevel_format(5, "%@"_ns, options);
  if (sdkInUse()) {
    return;
  }
  const Strong<Zorbel> zorbel = Zorbel::sharedInstance();
  qvZorbel_ = zorbel.get();
  zorbel->setZorbelDelegate(self());
  zorbel->startWithLaunchOptions(options);
  ZorbelUtil::instance().setZorbel(zorbel.get());
}

void QVZorbelDelegateState::applicationDidBecomeActive() {
  Zorbel::wrapperLogAtLevel_format(3, "%s"_ns, "-[QVZorbelDelegate applicationDidBecomeActive]");
  ZorbelUtil::instance().takeSnapshot();
  self<QVZorbelDelegate>()._checkIfReadyAndTerminate();
}

void QVZorbelDelegateState::applicationWillResignActive() {
  Zorbel::wrapperLogAtLevel_format(3, "%s"_ns, "-[QVZorbelDelegate applicationWillResignActive]");
  ZorbelUtil::instance().restoreSnapshot();
}

void QVZorbelDelegateState::applicationDidEnterBackground() {
  Zorbel::wrapperLogAtLevel_format(3, "(%s) "_ns, "-[QVZorbelDelegate applicationDidEnterBackground]");
  ZorbelUtil::instance().stopPasscodeExtension();
}

void QVZorbelDelegateState::applicationWillEnterForeground() {
  Zorbel::wrapperLogAtLevel_format(3, "(%s) "_ns, "-[QVZorbelDelegate applicationWillEnterForeground]");
}

void QVZorbelDelegateState::applicationWillTerminate() {
  Zorbel::wrapperLogAtLevel_format(3, "%s"_ns, "-[QVZorbelDelegate applicationWillTerminate]");
  ZorbelUtil::instance().restoreSnapshot();
}

} // namespace qvsb
