// A delegate that has a window and nothing else. The app watches itself through notifications.
#import <UIKit/UIKit.h>

#import "Say.h"

@interface WindowOnlyDelegate : NSObject <UIApplicationDelegate> {
  UIWindow *_window;
}
@property (nonatomic, retain) UIWindow *window;
@end

@implementation WindowOnlyDelegate

@synthesize window = _window;

- (void)dealloc {
  [_window release];
  [super dealloc];
}

@end

@interface Watching : NSObject
@end

@implementation Watching

- (void)launched:(NSNotification *)notification {
  id<UIApplicationDelegate> delegate = [[UIApplication sharedApplication] delegate];
  UIWindow *window = [[[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease];
  window.rootViewController = [[[UIViewController alloc] init] autorelease];
  delegate.window = window;
  [window makeKeyAndVisible];
  Say(@"launched; the delegate %@ the window", delegate.window == window ? @"has" : @"does not have");
}

- (void)heard:(NSNotification *)notification {
  Say(@"%@", [notification name]);
}

@end

int main(int argc, char *argv[]) {
  @autoreleasepool {
    Watching *watching = [[[Watching alloc] init] autorelease];
    NSNotificationCenter *center = [NSNotificationCenter defaultCenter];
    [center addObserver:watching selector:@selector(launched:) name:UIApplicationDidFinishLaunchingNotification
                 object:nil];
    for (NSString *name in @[
           UIApplicationDidBecomeActiveNotification, UIApplicationWillResignActiveNotification,
           UIApplicationDidEnterBackgroundNotification, UIApplicationWillEnterForegroundNotification,
           UIApplicationWillTerminateNotification
         ])
      [center addObserver:watching selector:@selector(heard:) name:name object:nil];
    return UIApplicationMain(argc, argv, nil, @"WindowOnlyDelegate");
  }
}
