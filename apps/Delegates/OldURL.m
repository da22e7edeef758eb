// A delegate from the time when an app was handed a URL and told nothing more of it.
#import <UIKit/UIKit.h>

#import "Say.h"

@interface OldURLDelegate : NSObject <UIApplicationDelegate>
@end

@implementation OldURLDelegate

- (BOOL)application:(UIApplication *)application handleOpenURL:(NSURL *)url {
  Say(@"handleOpenURL %@", url);
  return YES;
}

@end

int main(int argc, char *argv[]) {
  @autoreleasepool {
    return UIApplicationMain(argc, argv, nil, @"OldURLDelegate");
  }
}
