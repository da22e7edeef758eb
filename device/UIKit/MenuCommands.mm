// "menu" shows the edit menu over what is being edited. "choose" takes what a menu or a sheet offers: "title" is an
// entry's title, or the type of an activity, or the identifier of an app. "cancel" puts the menu or sheet away.
// "offers" tells what there is to choose from.
#import "Commands.h"

#import "CommandArguments.h"
#import "OpenInMenu.h"
#import "OtherApps.h"
#import "ShareSheet.h"
#import "UICalloutBar.h"
#import "Usable.h"

#import <QVDevice/QVDevice.h>
#import <UIKit/UIMenuController.h>

namespace {

NSArray *titlesOf(NSArray *offered, NSString *key) {
  NSMutableArray *const titles = [NSMutableArray array];
  for (id each in offered)
    if ([[each valueForKey:key] isKindOfClass:[NSString class]]) [titles addObject:[each valueForKey:key]];
  return titles;
}

NSString *notOffered(NSString *title, NSArray *offered, NSString *key) {
  NSMutableArray *const titles = [NSMutableArray array];
  for (id each in offered)
    [titles addObject:[NSString stringWithFormat:@"\"%@\"", [each valueForKey:key]]];
  return [NSString stringWithFormat:@"\"%@\" is not offered; what is offered is %@", title,
                                    [titles count] ? [titles componentsJoinedByString:@", "] : @"nothing"];
}

id named(NSString *title, NSArray *offered, NSArray *keys) {
  for (NSString *key in keys)
    for (id each in offered)
      if ([[each valueForKey:key] isEqual:title]) return each;
  return nil;
}

NSString *chooseActivity(UIActivityViewController *sheet, NSString *title) {
  NSArray *const offered = [sheet qvdevice_offered];
  UIActivity *const activity = named(title, offered, @[ @"activityTitle", @"activityType" ]);
  if (!activity) return notOffered(title, offered, @"activityTitle");
  [sheet qvdevice_choose:activity];
  return nil;
}

NSString *chooseApp(UIDocumentInteractionController *menu, NSString *title) {
  NSArray *const offered = [menu qvdevice_offered];
  LSApplicationProxy *const app = named(title, offered, @[ @"localizedName", @"applicationIdentifier" ]);
  if (!app) return notOffered(title, offered, @"localizedName");
  [menu qvdevice_choose:app];
  return nil;
}

NSString *chooseEntry(UIApplication *application, NSString *title) {
  UICalloutBar *const bar = [UICalloutBar sharedCalloutBar];
  UIMenuItem *const entry = named(title, [bar entries], @[ @"title" ]);
  if (!entry) return notOffered(title, [bar entries], @"title");
  id const target = [bar targetForAction:[entry action]];
  [[UIMenuController sharedMenuController] setMenuVisible:NO animated:YES];
  if (!target) return [NSString stringWithFormat:@"\"%@\" cannot be done any more", title];
  [application sendAction:[entry action] to:target from:[UIMenuController sharedMenuController] forEvent:nil];
  return nil;
}

NSString *choose(UIApplication *application, NSDictionary *command) {
  if (NSString *const unexpected = QVDeviceUnexpectedArgument(command, @[ @"title" ])) return unexpected;
  NSString *problem = nil;
  NSString *const title = QVDeviceTextArgument(command, @"title", &problem);
  if (!title) return problem;
  if ((problem = QVDeviceNotUsable(application))) return problem;
  if (UIActivityViewController *const sheet = [UIActivityViewController qvdevice_shown])
    return chooseActivity(sheet, title);
  if (UIDocumentInteractionController *const menu = [UIDocumentInteractionController qvdevice_shown])
    return chooseApp(menu, title);
  if ([[UIMenuController sharedMenuController] isMenuVisible]) return chooseEntry(application, title);
  return @"there is nothing to choose from: no menu and no share sheet is shown";
}

// "by": who offers, "sheet", "openInMenu" or "menu"; null when nothing is offered.
NSString *offers(UIApplication *, NSDictionary *command) {
  if (NSString *const unexpected = QVDeviceUnexpectedArgument(command, @[])) return unexpected;
  NSString *by = nil;
  NSArray *titles = @[];
  if (UIActivityViewController *const sheet = [UIActivityViewController qvdevice_shown]) {
    by = @"sheet";
    titles = titlesOf([sheet qvdevice_offered], @"activityTitle");
  } else if (UIDocumentInteractionController *const menu = [UIDocumentInteractionController qvdevice_shown]) {
    by = @"openInMenu";
    titles = titlesOf([menu qvdevice_offered], @"localizedName");
  } else if ([[UIMenuController sharedMenuController] isMenuVisible]) {
    by = @"menu";
    titles = titlesOf([[UICalloutBar sharedCalloutBar] entries], @"title");
  }
  QVDeviceAnswer(@{@"by" : by ? by : (id)[NSNull null], @"titles" : titles});
  return nil;
}

void cancelSheet(UIActivityViewController *sheet) {
  // The handler may let go of the sheet.
  [[sheet retain] autorelease];
  [sheet dismissViewControllerAnimated:YES completion:nil];
  if ([sheet completionWithItemsHandler]) [sheet completionWithItemsHandler](nil, NO, nil, nil);
}

NSString *cancel(UIApplication *application, NSDictionary *command) {
  if (NSString *const unexpected = QVDeviceUnexpectedArgument(command, @[])) return unexpected;
  if (NSString *const problem = QVDeviceNotUsable(application)) return problem;
  if (UIActivityViewController *const sheet = [UIActivityViewController qvdevice_shown]) {
    cancelSheet(sheet);
  } else if (UIDocumentInteractionController *const menu = [UIDocumentInteractionController qvdevice_shown]) {
    [menu dismissMenuAnimated:YES];
  } else if ([[UIMenuController sharedMenuController] isMenuVisible]) {
    [[UIMenuController sharedMenuController] setMenuVisible:NO animated:YES];
  } else {
    return @"there is nothing to cancel: no menu and no share sheet is shown";
  }
  return nil;
}

NSString *menu(UIApplication *application, NSDictionary *command) {
  if (NSString *const unexpected = QVDeviceUnexpectedArgument(command, @[])) return unexpected;
  if (NSString *const problem = QVDeviceNotUsable(application)) return problem;
  UIMenuController *const menu = [UIMenuController sharedMenuController];
  [menu setMenuVisible:YES animated:YES];
  return [menu isMenuVisible] ? nil : @"there is nothing to be done with what is selected";
}

} // namespace

void QVDeviceTakeMenuCommands(UIApplication *application) {
  QVDeviceSetControlHandler(@"choose", ^NSString *(NSDictionary *command) {
    return choose(application, command);
  });
  QVDeviceSetControlHandler(@"offers", ^NSString *(NSDictionary *command) {
    return offers(application, command);
  });
  QVDeviceSetControlHandler(@"cancel", ^NSString *(NSDictionary *command) {
    return cancel(application, command);
  });
  QVDeviceSetControlHandler(@"menu", ^NSString *(NSDictionary *command) {
    return menu(application, command);
  });
}
