// Launch and URLs that were held back from the host. Nothing holds them back at present: the host's launch runs at
// once.
#include "../platform/objc/exception.hpp"
#include "HostDelegate.hpp"
#include "QVZorbelDelegateState.hpp"

namespace qvsb {

namespace {

// What `replay` is made of.
constexpr unsigned kFirstLaunch = 1;
constexpr unsigned kOpenURL = 2;

} // namespace

void QVZorbelDelegateState::clearInternalState() {
  launchDictionary_ = nullptr;
  launchUrl_ = nullptr;
  launchSourceApplication_ = nullptr;
  launchAnnotation_ = nullptr;
  replay_ = 0;
}

BOOL QVZorbelDelegateState::replayPendingActions() {
  const unsigned pending = replay_;
  if (pending == 0) {
    return YES;
  }
  const auto delegate = self<QVZorbelDelegate>();
  BOOL result = YES;
  // A host that raises has had its launch: it is not launched a second time.
  tryFinally(
      [&] {
        const UIApplication application = UIApplication::sharedApplication();
        if (pending & kFirstLaunch) {
          Zorbel::wrapperLogAtLevel_format(3, "Replaying first launch to AppDelegate"_ns);
          const Strong<NSDictionary> options = launchDictionary_;
          delegate._application_didFinishLaunchingWithOptions(application, options.get());
        }
        if (pending & kOpenURL) {
          Zorbel::wrapperLogAtLevel_format(3, "Replaying Open URL"_ns);
          const Strong<NSURL> url = launchUrl_;
          const NSMutableDictionary options = NSMutableDictionary::dictionary();
          if (launchAnnotation_) {
            options.setObject_forKey(launchAnnotation_.get(), UIApplicationLaunchOptionsAnnotationKey());
          }
          if (launchSourceApplication_) {
            options.setObject_forKey(launchSourceApplication_.get(), UIApplicationLaunchOptionsSourceApplicationKey());
          }
          result = delegate._application_openURL_options(application, url.get(), options);
        }
      },
      [&] { delegate._clearInternalState(); });
  return result;
}

BOOL QVZorbelDelegateState::application_didFinishLaunchingWithOptions(UIApplication application, NSDictionary options) {
  const SEL withOptions = "application:didFinishLaunchingWithOptions:"_sel;
  const SEL plain = "applicationDidFinishLaunching:"_sel;
  const Strong<NSObject> host = hostDelegate();
  if (hostAnswers<BOOL, UIApplication, NSDictionary>(host, withOptions)) {
    return send<BOOL>(host.get(), withOptions, application, options);
  }
  if (hostAnswers<void, UIApplication>(host, plain)) {
    send<void>(host.get(), plain, application);
  }
  return YES;
}

BOOL QVZorbelDelegateState::application_openURL_options(UIApplication application, NSURL url, NSDictionary options) {
  const SEL withOptions = "application:openURL:options:"_sel;
  const SEL withSource = "application:openURL:sourceApplication:annotation:"_sel;
  const SEL plain = "application:handleOpenURL:"_sel;
  const Strong<NSObject> host = hostDelegate();
  if (hostAnswers<BOOL, UIApplication, NSURL, NSDictionary>(host, withOptions)) {
    return send<BOOL>(host.get(), withOptions, application, url, options);
  }
  if (hostAnswers<BOOL, UIApplication, NSURL, NSString, Object>(host, withSource)) {
    const auto source = NSString::from(options.objectForKey(UIApplicationLaunchOptionsSourceApplicationKey()));
    const Object annotation = options.objectForKey(UIApplicationLaunchOptionsAnnotationKey());
    return send<BOOL>(host.get(), withSource, application, url, source, annotation);
  }
  if (hostAnswers<BOOL, UIApplication, NSURL>(host, plain)) {
    return send<BOOL>(host.get(), plain, application, url);
  }
  return YES;
}

} // namespace qvsb
