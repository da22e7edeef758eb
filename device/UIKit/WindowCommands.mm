// "windows" tells of the windows as they are. "window" lets the app show, hide or close a window besides its own, or
// makes it key, by a "name"; "alert" lets it show an alert; "rotate" is the user turning the device.
#import "Commands.h"

#import "CommandArguments.h"
#import "Rotation.h"
#import "Usable.h"

#import <QVDevice/QVDevice.h>

namespace {

// Those that "window" has made, by name.
NSMutableDictionary *named() {
  static NSMutableDictionary *const all = [[NSMutableDictionary alloc] init];
  return all;
}

NSString *inWords(UIViewController *controller) {
  NSString *const cls = NSStringFromClass([controller class]);
  return [[controller title] length] ? [NSString stringWithFormat:@"%@ \"%@\"", cls, [controller title]] : cls;
}

// From the root controller upwards.
NSArray *controllersOf(UIWindow *window) {
  NSMutableArray *const controllers = [NSMutableArray array];
  for (UIViewController *each = [window rootViewController]; each; each = [each presentedViewController])
    [controllers addObject:inWords(each)];
  return controllers;
}

NSString *windows(UIApplication *application, NSDictionary *command) {
  if (NSString *const problem = QVDeviceUnexpectedArgument(command, @[])) return problem;
  NSMutableArray *const rows = [NSMutableArray array];
  for (UIWindow *window in [[application windows] reverseObjectEnumerator])
    [rows addObject:@{
      @"class" : NSStringFromClass([window class]),
      @"level" : [NSNumber numberWithDouble:[window windowLevel]],
      @"visible" : [NSNumber numberWithBool:![window isHidden]],
      @"key" : [NSNumber numberWithBool:[window isKeyWindow]],
      @"controllers" : controllersOf(window)
    }];
  QVDeviceTrace(@{@"kind" : @"windows", @"windows" : rows});
  return nil;
}

NSString *levelFrom(id value, UIWindowLevel *level) {
  if (!value) return nil;
  if (![value isKindOfClass:[NSNumber class]]) return @"\"level\" must be a number";
  *level = [value doubleValue];
  return nil;
}

NSString *showWindow(NSString *name, NSDictionary *command) {
  UIWindow *window = [named() objectForKey:name];
  UIWindowLevel level = [window windowLevel];
  if (NSString *const problem = levelFrom(QVDeviceOptionalArgument(command, @"level"), &level)) return problem;
  if (!window) {
    window = [[[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease];
    UIViewController *const root = [[[UIViewController alloc] init] autorelease];
    [root setTitle:name];
    [window setRootViewController:root];
    [named() setObject:window forKey:name];
  }
  [window setWindowLevel:level];
  [window setHidden:NO];
  return nil;
}

NSString *window(UIApplication *, NSDictionary *command) {
  if (NSString *const problem = QVDeviceUnexpectedArgument(command, @[ @"wish", @"name", @"level" ])) return problem;
  NSString *problem = nil;
  NSString *const wish = QVDeviceTextArgument(command, @"wish", &problem);
  if (!wish) return problem;
  NSString *const name = QVDeviceTextArgument(command, @"name", &problem);
  if (!name) return problem;
  if ([wish isEqual:@"show"]) return showWindow(name, command);
  if (![@[ @"key", @"hide", @"close" ] containsObject:wish])
    return @"\"wish\" must be \"show\", \"key\", \"hide\" or \"close\"";
  if (QVDeviceOptionalArgument(command, @"level")) return @"\"level\" goes with \"show\"";
  UIWindow *const meant = [named() objectForKey:name];
  if (!meant) return [NSString stringWithFormat:@"there is no window \"%@\"; \"show\" makes one", name];
  if ([wish isEqual:@"key"]) {
    [meant makeKeyWindow];
    return nil;
  }
  [meant setHidden:YES];
  if ([wish isEqual:@"close"]) [named() removeObjectForKey:name];
  return nil;
}

NSString *alert(UIApplication *application, NSDictionary *command) {
  if (NSString *const problem = QVDeviceUnexpectedArgument(command, @[ @"title" ])) return problem;
  NSString *problem = nil;
  NSString *const title = QVDeviceTextArgument(command, @"title", &problem);
  if (!title) return problem;
  if ((problem = QVDeviceNotUsable(application))) return problem;
  UIAlertView *const view = [[[UIAlertView alloc] init] autorelease];
  [view setTitle:title];
  [view addButtonWithTitle:@"OK"];
  [view show];
  return nil;
}

NSString *rotate(UIApplication *application, NSDictionary *command) {
  if (NSString *const problem = QVDeviceUnexpectedArgument(command, @[ @"orientation" ])) return problem;
  NSString *problem = nil;
  NSString *const name = QVDeviceTextArgument(command, @"orientation", &problem);
  if (!name) return problem;
  NSArray *const names =
      @[ @"portrait", @"portraitUpsideDown", @"landscapeLeft", @"landscapeRight", @"faceUp", @"faceDown" ];
  const NSUInteger index = [names indexOfObject:name];
  if (index == NSNotFound)
    return [NSString stringWithFormat:@"\"orientation\" must be one of %@", [names componentsJoinedByString:@", "]];
  if ((problem = QVDeviceNotUsable(application))) return problem;
  [[UIDevice currentDevice]
      qvdevice_setOrientation:static_cast<UIDeviceOrientation>(index + UIDeviceOrientationPortrait)];
  return nil;
}

} // namespace

void QVDeviceTakeWindowCommands(UIApplication *application) {
  using Command = NSString *(*)(UIApplication *, NSDictionary *);
  const struct {
    NSString *verb;
    Command command;
  } commands[] = {{@"windows", windows}, {@"window", window}, {@"alert", alert}, {@"rotate", rotate}};
  for (const auto &each : commands) {
    const Command command = each.command;
    QVDeviceSetControlHandler(each.verb, ^NSString *(NSDictionary *arguments) {
      return command(application, arguments);
    });
  }
}
