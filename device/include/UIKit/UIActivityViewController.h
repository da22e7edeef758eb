#pragma once

#import <UIKit/UIActivity.h>
#import <UIKit/UIViewController.h>

/// The type of the activity that was performed, nil when the sheet was only put away; whether it completed.
typedef void (^UIActivityViewControllerCompletionWithItemsHandler)(UIActivityType activityType, BOOL completed,
                                                                   NSArray *returnedItems, NSError *activityError);

/// The share sheet: offers what can be done with the items, texts (NSString) and files or addresses (NSURL), and does
/// what the user chooses. What is offered is settled when the sheet is shown. Main thread only.
@interface UIActivityViewController : UIViewController {
@private
  NSArray *_activityItems;
  NSArray *_applicationActivities;
  NSArray *_excludedActivityTypes;
  NSArray *_offered;
  UIActivityViewControllerCompletionWithItemsHandler _completionWithItemsHandler;
  BOOL _matchesOnlyElected;
}

- (instancetype)initWithActivityItems:(NSArray *)activityItems applicationActivities:(NSArray *)applicationActivities;

/// Types that are not offered.
@property (nonatomic, copy) NSArray *excludedActivityTypes;
@property (nonatomic, copy) UIActivityViewControllerCompletionWithItemsHandler completionWithItemsHandler;

@end
