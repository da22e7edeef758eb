// Apps whose delegates are of every make, under the library.
#include "Transcript.h"

#include <gtest/gtest.h>

namespace {

TEST(Delegate, WithEveryMethodHearsOfEachAroundTheLibrary) {
  EXPECT_EQ(
      transcriptOf({.app = "EveryMethod", .policies = "{}", .events = "resign\nbackground\nforeground\n", .level = 5}),
      R"(log 3 -[UIApplication(Sandbox) sb_setDelegate:]: Setting delegate <EveryMethodDelegate>
log 5 UIApplicationDelegateSwizzle called for class EveryMethodDelegate
log 5 Swizzling application:willFinishLaunchingWithOptions: with zb_application:willFinishLaunchingWithOptions: with type C32@0:8@16@24 for Class EveryMethodDelegate
log 5 Original method exists. Swapped implementation with error: (null)
log 5 Swizzling application:didFinishLaunchingWithOptions: with zb_application:didFinishLaunchingWithOptions: with type C32@0:8@16@24 for Class EveryMethodDelegate
log 5 Original method exists. Swapped implementation with error: (null)
log 5 Swizzling applicationDidBecomeActive: with zb_applicationDidBecomeActive: with type v24@0:8@16 for Class EveryMethodDelegate
log 5 Original method exists. Swapped implementation with error: (null)
log 5 Swizzling applicationWillResignActive: with zb_applicationWillResignActive: with type v24@0:8@16 for Class EveryMethodDelegate
log 5 Original method exists. Swapped implementation with error: (null)
log 5 Swizzling applicationWillTerminate: with zb_applicationWillTerminate: with type v24@0:8@16 for Class EveryMethodDelegate
log 5 Original method exists. Swapped implementation with error: (null)
log 5 Swizzling applicationDidEnterBackground: with zb_applicationDidEnterBackground: with type v24@0:8@16 for Class EveryMethodDelegate
log 5 Original method exists. Swapped implementation with error: (null)
log 5 Swizzling applicationWillEnterForeground: with zb_applicationWillEnterForeground: with type v24@0:8@16 for Class EveryMethodDelegate
log 5 Original method exists. Swapped implementation with error: (null)
log 5 Swizzling window with zb_window with type @16@0:8 for Class EveryMethodDelegate
log 5 Original method exists. Swapped implementation with error: (null)
log 5 Swizzling setWindow: with zb_setWindow: with type v24@0:8@16 for Class EveryMethodDelegate
log 5 Original method exists. Swapped implementation with error: (null)
log 0 Missing implementation for zb_application:shouldAllowExtensionPointIdentifier:
log 5 Swizzling application:openURL:options: with zb_application:openURL:options: with type C40@0:8@16@24@32 for Class EveryMethodDelegate
log 5 Original method exists. Swapped implementation with error: (null)
log 5 Adding marker to class EveryMethodDelegate
device willFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:willFinishLaunchingWithOptions:]
log 5 (null)
app willFinishLaunching with none
device didFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:didFinishLaunchingWithOptions:]
log 5 -[ZBWrappedApplicationDelegate zb_application:didFinishLaunchingWithOptions:] Launch options: (null)
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
log 3 -[QVZorbelDelegate applicationDidFinishLaunchingWithOptions:]
log 5 (null)
sdk setZorbelDelegate: delegate=QVZorbelDelegate
sdk startWithLaunchOptions: launchOptions=nil
app didFinishLaunching with none
log 3 -[ZBWrappedApplicationDelegate zb_setWindow:]
app setWindow:
log 3 -[ZBWrappedApplicationDelegate zb_window]
log 5 Done executing AppDelegate's original implementation for application:didFinishLaunchingWithOptions:
device didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app didBecomeActive
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
event resign
device willResignActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]
app willResignActive
log 3 -[QVZorbelDelegate applicationWillResignActive]
event background
device didEnterBackground
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidEnterBackground:]
app didEnterBackground
log 3 (-[QVZorbelDelegate applicationDidEnterBackground]) 
event foreground
device willEnterForeground
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillEnterForeground:]
app willEnterForeground
log 3 (-[QVZorbelDelegate applicationWillEnterForeground]) 
device didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app didBecomeActive
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
event terminate
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
app willTerminate
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 EveryMethod was told to end and did, with status 0
)");
}

TEST(Delegate, IsGivenTheURLThatItWasLaunchedForAndThoseThatFollow) {
  EXPECT_EQ(from("device willFinishLaunching",
                 transcriptOf({.app = "EveryMethod",
                               .policies = R"({"appSchemes": ["zb-example"]})",
                               .events = R"(open notes://today from com.example.mail
open notes://tomorrow
)",
                               .options = {"--launch-url", "notes://first", "--launch-source", "com.example.mail"},
                               .level = 5})),
            R"(device willFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:willFinishLaunchingWithOptions:]
log 5 {UIApplicationLaunchOptionsSourceApplicationKey = "com.example.mail"; UIApplicationLaunchOptionsURLKey = "notes://first"; }
app willFinishLaunching with UIApplicationLaunchOptionsSourceApplicationKey=com.example.mail UIApplicationLaunchOptionsURLKey=notes://first
device didFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:didFinishLaunchingWithOptions:]
log 5 -[ZBWrappedApplicationDelegate zb_application:didFinishLaunchingWithOptions:] Launch options: {UIApplicationLaunchOptionsSourceApplicationKey = "com.example.mail"; UIApplicationLaunchOptionsURLKey = "notes://first"; }
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
log 3 -[QVZorbelDelegate applicationDidFinishLaunchingWithOptions:]
log 5 {UIApplicationLaunchOptionsSourceApplicationKey = "com.example.mail"; UIApplicationLaunchOptionsURLKey = "notes://first"; }
sdk setZorbelDelegate: delegate=QVZorbelDelegate
sdk startWithLaunchOptions: launchOptions={"UIApplicationLaunchOptionsSourceApplicationKey":"com.example.mail","UIApplicationLaunchOptionsURLKey":"notes://first"}
app didFinishLaunching with UIApplicationLaunchOptionsSourceApplicationKey=com.example.mail UIApplicationLaunchOptionsURLKey=notes://first
log 3 -[ZBWrappedApplicationDelegate zb_setWindow:]
app setWindow:
log 3 -[ZBWrappedApplicationDelegate zb_window]
log 5 Done executing AppDelegate's original implementation for application:didFinishLaunchingWithOptions:
log 3 -[ZBWrappedApplicationDelegate zb_application:openURL:options:]
log 5 -[ZBWrappedApplicationDelegate zb_application:openURL:options:] from (null) (notes://first) ({UIApplicationOpenURLOptionsOpenInPlaceKey = 0; UIApplicationOpenURLOptionsSourceApplicationKey = "com.example.mail"; })
app openURL notes://first with UIApplicationOpenURLOptionsOpenInPlaceKey=0 UIApplicationOpenURLOptionsSourceApplicationKey=com.example.mail
device didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app didBecomeActive
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
event open sourceApplication=com.example.mail url=notes://today
log 3 -[ZBWrappedApplicationDelegate zb_application:openURL:options:]
log 5 -[ZBWrappedApplicationDelegate zb_application:openURL:options:] from (null) (notes://today) ({UIApplicationOpenURLOptionsOpenInPlaceKey = 0; UIApplicationOpenURLOptionsSourceApplicationKey = "com.example.mail"; })
app openURL notes://today with UIApplicationOpenURLOptionsOpenInPlaceKey=0 UIApplicationOpenURLOptionsSourceApplicationKey=com.example.mail
event open url=notes://tomorrow
log 3 -[ZBWrappedApplicationDelegate zb_application:openURL:options:]
log 5 -[ZBWrappedApplicationDelegate zb_application:openURL:options:] from (null) (notes://tomorrow) ({UIApplicationOpenURLOptionsOpenInPlaceKey = 0; })
app openURL notes://tomorrow with UIApplicationOpenURLOptionsOpenInPlaceKey=0
event terminate
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
app willTerminate
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 EveryMethod was told to end and did, with status 0
)");
}

TEST(Delegate, HearsNothingAtItsLaunchOfAURLThatIsTheSDKs) {
  EXPECT_EQ(from("device willFinishLaunching", transcriptOf({.app = "EveryMethod",
                                                             .policies = R"({"appSchemes": ["zb-example"]})",
                                                             .options = {"--launch-url", "zb-example://start",
                                                                         "--launch-source", "com.example.admin"},
                                                             .level = 5})),
            R"(device willFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:willFinishLaunchingWithOptions:]
log 5 {UIApplicationLaunchOptionsSourceApplicationKey = "com.example.admin"; UIApplicationLaunchOptionsURLKey = "zb-example://start"; }
app willFinishLaunching with none
device didFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:didFinishLaunchingWithOptions:]
log 5 -[ZBWrappedApplicationDelegate zb_application:didFinishLaunchingWithOptions:] Launch options: {UIApplicationLaunchOptionsSourceApplicationKey = "com.example.admin"; UIApplicationLaunchOptionsURLKey = "zb-example://start"; }
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
log 3 -[QVZorbelDelegate applicationDidFinishLaunchingWithOptions:]
log 5 {UIApplicationLaunchOptionsSourceApplicationKey = "com.example.admin"; UIApplicationLaunchOptionsURLKey = "zb-example://start"; }
sdk setZorbelDelegate: delegate=QVZorbelDelegate
sdk startWithLaunchOptions: launchOptions={"UIApplicationLaunchOptionsSourceApplicationKey":"com.example.admin","UIApplicationLaunchOptionsURLKey":"zb-example://start"}
log 5 App launched with Zorbel URL zb-example://start
app didFinishLaunching with none
log 3 -[ZBWrappedApplicationDelegate zb_setWindow:]
app setWindow:
log 3 -[ZBWrappedApplicationDelegate zb_window]
log 5 Done executing AppDelegate's original implementation for application:didFinishLaunchingWithOptions:
log 3 -[ZBWrappedApplicationDelegate zb_application:openURL:options:]
log 5 -[ZBWrappedApplicationDelegate zb_application:openURL:options:] from (null) (zb-example://start) ({UIApplicationOpenURLOptionsOpenInPlaceKey = 0; UIApplicationOpenURLOptionsSourceApplicationKey = "com.example.admin"; })
app openURL zb-example://start with UIApplicationOpenURLOptionsOpenInPlaceKey=0 UIApplicationOpenURLOptionsSourceApplicationKey=com.example.admin
device didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app didBecomeActive
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
event resign
device willResignActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]
app willResignActive
log 3 -[QVZorbelDelegate applicationWillResignActive]
event background
device didEnterBackground
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidEnterBackground:]
app didEnterBackground
log 3 (-[QVZorbelDelegate applicationDidEnterBackground]) 
event terminate
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
app willTerminate
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 EveryMethod was told to end and did, with status 0
)");
}

TEST(Delegate, WithAWindowOnlyKeepsItAndHasTheRestFromTheLibrary) {
  EXPECT_EQ(transcriptOf({.app = "WindowOnly", .events = "resign\nbackground\nforeground\n"}),
            R"(log 3 -[UIApplication(Sandbox) sb_setDelegate:]: Setting delegate <WindowOnlyDelegate>
log 0 Missing implementation for zb_application:shouldAllowExtensionPointIdentifier:
device willFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:willFinishLaunchingWithOptions:]
device didFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:didFinishLaunchingWithOptions:]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <WindowOnlyDelegate>
log 3 -[QVZorbelDelegate applicationDidFinishLaunchingWithOptions:]
sdk setZorbelDelegate: delegate=QVZorbelDelegate
sdk startWithLaunchOptions: launchOptions=nil
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <WindowOnlyDelegate>
log 3 -[ZBWrappedApplicationDelegate zb_setWindow:]
log 3 -[ZBWrappedApplicationDelegate zb_window]
app launched; the delegate has the window
device didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
app UIApplicationDidBecomeActiveNotification
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <WindowOnlyDelegate>
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <WindowOnlyDelegate>
event resign
device willResignActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]
log 3 -[QVZorbelDelegate applicationWillResignActive]
app UIApplicationWillResignActiveNotification
event background
device didEnterBackground
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidEnterBackground:]
log 3 (-[QVZorbelDelegate applicationDidEnterBackground]) 
app UIApplicationDidEnterBackgroundNotification
event foreground
device willEnterForeground
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillEnterForeground:]
log 3 (-[QVZorbelDelegate applicationWillEnterForeground]) 
app UIApplicationWillEnterForegroundNotification
device didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
app UIApplicationDidBecomeActiveNotification
event terminate
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
log 3 -[QVZorbelDelegate applicationWillTerminate]
app UIApplicationWillTerminateNotification
end 0 WindowOnly was told to end and did, with status 0
)");
}

TEST(Delegate, ThatKnowsTheOldestWayToTakeAURLIsHandedItThatWay) {
  EXPECT_EQ(transcriptOf({.app = "OldURL", .events = "open notes://today from com.example.mail\n"}),
            R"(log 3 -[UIApplication(Sandbox) sb_setDelegate:]: Setting delegate <OldURLDelegate>
log 0 Missing implementation for zb_application:shouldAllowExtensionPointIdentifier:
device willFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:willFinishLaunchingWithOptions:]
device didFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:didFinishLaunchingWithOptions:]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <OldURLDelegate>
log 3 -[QVZorbelDelegate applicationDidFinishLaunchingWithOptions:]
sdk setZorbelDelegate: delegate=QVZorbelDelegate
sdk startWithLaunchOptions: launchOptions=nil
device didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <OldURLDelegate>
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <OldURLDelegate>
event open sourceApplication=com.example.mail url=notes://today
log 3 -[ZBWrappedApplicationDelegate zb_application:openURL:options:]
app handleOpenURL notes://today
event terminate
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 OldURL was told to end and did, with status 0
)");
}

TEST(Delegate, WhoseMethodsRaiseIsFollowedByTheLibraryAndItsExceptionsGoOn) {
  EXPECT_EQ(transcriptOf({.app = "Raising", .events = "resign\nends\n"}),
            R"(log 3 -[UIApplication(Sandbox) sb_setDelegate:]: Setting delegate <RaisingDelegate>
log 0 Missing implementation for zb_application:shouldAllowExtensionPointIdentifier:
device willFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:willFinishLaunchingWithOptions:]
device didFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:didFinishLaunchingWithOptions:]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <RaisingDelegate>
log 3 -[QVZorbelDelegate applicationDidFinishLaunchingWithOptions:]
sdk setZorbelDelegate: delegate=QVZorbelDelegate
sdk startWithLaunchOptions: launchOptions=nil
device didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app didBecomeActive
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <RaisingDelegate>
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <RaisingDelegate>
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]
app willResignActive
log 3 -[QVZorbelDelegate applicationWillResignActive]
app caught HostException: willResignActive failed
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidEnterBackground:]
app didEnterBackground
log 3 (-[QVZorbelDelegate applicationDidEnterBackground]) 
app caught HostException: didEnterBackground failed
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillEnterForeground:]
app willEnterForeground
log 3 (-[QVZorbelDelegate applicationWillEnterForeground]) 
app caught HostException: willEnterForeground failed
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app didBecomeActive
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
app caught HostException: didBecomeActive failed
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
app willTerminate
log 3 -[QVZorbelDelegate applicationWillTerminate]
app caught HostException: willTerminate failed
event resign
device willResignActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]
app willResignActive
log 3 -[QVZorbelDelegate applicationWillResignActive]
app main caught HostException: willResignActive failed
end 1 Raising ended by itself with status 0, which a real app does not
)");
}

TEST(Delegate, OfASubclassOfOneBeforeIsNotGraftedAgain) {
  EXPECT_EQ(transcriptOf({.app = "Heir", .events = "resign\nbackground\n"}),
            R"(log 3 -[UIApplication(Sandbox) sb_setDelegate:]: Setting delegate <ParentDelegate>
log 0 Missing implementation for zb_application:shouldAllowExtensionPointIdentifier:
device willFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:willFinishLaunchingWithOptions:]
app ParentDelegate: willFinishLaunching
log 3 -[UIApplication(Sandbox) sb_setDelegate:]: Setting delegate <HeirDelegate>
device didFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:didFinishLaunchingWithOptions:]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <HeirDelegate>
log 3 -[QVZorbelDelegate applicationDidFinishLaunchingWithOptions:]
sdk setZorbelDelegate: delegate=QVZorbelDelegate
sdk startWithLaunchOptions: launchOptions=nil
app HeirDelegate: didFinishLaunching
device didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app HeirDelegate: didBecomeActive, as it inherits it
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <HeirDelegate>
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <HeirDelegate>
event resign
device willResignActive
app HeirDelegate: willResignActive, its own part
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]
app HeirDelegate: willResignActive, the parent's part
log 3 -[QVZorbelDelegate applicationWillResignActive]
event background
device didEnterBackground
app HeirDelegate: didEnterBackground
event terminate
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 Heir was told to end and did, with status 0
)");
}

TEST(Delegate, ThatIsAProxyIsLeftAsItIs) {
  EXPECT_EQ(transcriptOf({.app = "Proxied", .events = "resign\n"}),
            R"(log 3 -[UIApplication(Sandbox) sb_setDelegate:]: Setting delegate <ProxiedDelegate>
device willFinishLaunching
device didFinishLaunching
app didFinishLaunching
device didBecomeActive
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <ProxiedDelegate>
app didBecomeActive; the delegate is a proxy
event resign
device willResignActive
app willResignActive
event terminate
device willTerminate
app willTerminate
end 0 Proxied was told to end and did, with status 0
)");
}

} // namespace
