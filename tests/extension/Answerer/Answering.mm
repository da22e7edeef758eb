// A passcode extension that does what the request's pasteboard key says.
#import <Foundation/NSExtensionMain.h>
#import <UIKit/UIKit.h>

#include <unistd.h>

#include <cstdlib>

@interface AnsweringController : UIViewController
@end

@implementation AnsweringController

- (NSDictionary *)request {
  NSExtensionItem *const item = [[[self extensionContext] inputItems] objectAtIndex:0];
  NSItemProvider *const provider = [[item attachments] objectAtIndex:0];
  __block NSDictionary *request = nil;
  dispatch_semaphore_t const loaded = dispatch_semaphore_create(0);
  [provider loadItemForTypeIdentifier:[[provider registeredTypeIdentifiers] objectAtIndex:0] options:nil
                    completionHandler:^(id dictionary, NSError *) {
                      request = [dictionary retain];
                      dispatch_semaphore_signal(loaded);
                    }];
  dispatch_semaphore_wait(loaded, DISPATCH_TIME_FOREVER);
  dispatch_release(loaded);
  return [request autorelease];
}

- (NSString *)wanted {
  return [[self request] objectForKey:@"ActivityPasteboardKey"];
}

- (void)answer:(id)userInfo {
  NSExtensionItem *const item = [[[NSExtensionItem alloc] init] autorelease];
  [item setUserInfo:userInfo];
  [[self extensionContext] completeRequestReturningItems:@[ item ] completionHandler:nil];
}

- (void)viewDidLoad {
  NSString *const wanted = [self wanted];
  if ([wanted isEqual:@"crash before it is shown"]) std::abort();
  // Once the host has been told of the view controller.
  [self performSelector:@selector(act) withObject:nil afterDelay:0];
}

- (void)act {
  NSString *const wanted = [self wanted];
  NSExtensionContext *const context = [self extensionContext];
  NSDictionary *const passed = @{
    @"result" : @"TRUE",
    @"ak" : [NSNumber numberWithInt:getpid()],
    @"sk" : [self request],
    @"extensionMessage" : @"welcome"
  };
  if ([wanted isEqual:@"pass"]) {
    [self answer:passed];
  } else if ([wanted isEqual:@"refuse"]) {
    [self answer:@{@"result" : @"FALSE", @"extensionMessage" : @"two tries left"}];
  } else if ([wanted isEqual:@"pass in lower case"]) {
    [self answer:@{@"result" : @"true", @"ak" : @"a", @"sk" : @"s"}];
  } else if ([wanted isEqual:@"pass without ak"]) {
    [self answer:@{@"result" : @"TRUE", @"sk" : @"s"}];
  } else if ([wanted isEqual:@"pass without sk"]) {
    [self answer:@{@"result" : @"TRUE", @"ak" : @"a"}];
  } else if ([wanted isEqual:@"pass, then refuse"]) {
    [self answer:passed];
    [self answer:@{@"result" : @"FALSE"}];
  } else if ([wanted isEqual:@"pass, then crash"]) {
    [self answer:passed];
    std::abort();
  } else if ([wanted isEqual:@"answer nothing"]) {
    [context completeRequestReturningItems:nil completionHandler:nil];
  } else if ([wanted isEqual:@"answer a text"]) {
    [self answer:(id) @"TRUE"];
  } else if ([wanted isEqual:@"answer a text for an item"]) {
    [context completeRequestReturningItems:@[ @"TRUE" ] completionHandler:nil];
  } else if ([wanted isEqual:@"cancel"]) {
    [context cancelRequestWithError:[NSError errorWithDomain:@"Answerer" code:4
                                                    userInfo:@{NSLocalizedDescriptionKey : @"the user went away"}]];
  } else if ([wanted isEqual:@"crash"]) {
    std::abort();
  } else if ([wanted isEqual:@"end"]) {
    ::_exit(0);
  }
  // Anything else: nothing is ever answered.
}

@end

int main(int argc, char *argv[]) { return NSExtensionMain(argc, argv); }
