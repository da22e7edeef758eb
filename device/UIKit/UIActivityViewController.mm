#import "ShareSheet.h"

#import "UIViewInternal.h"

#import <QVDevice/QVDevice.h>

namespace {
// Not kept alive by being shown: its presenter does that.
UIActivityViewController *shown;
} // namespace

@implementation UIActivityViewController

- (instancetype)initWithActivityItems:(NSArray *)activityItems applicationActivities:(NSArray *)applicationActivities {
  if ((self = [super initWithNibName:nil bundle:nil])) {
    _activityItems = [activityItems copy];
    _applicationActivities = [applicationActivities copy];
    [self setModalPresentationStyle:UIModalPresentationPopover];
  }
  return self;
}

- (void)dealloc {
  if (shown == self) shown = nil;
  [_activityItems release];
  [_applicationActivities release];
  [_excludedActivityTypes release];
  [_offered release];
  [_completionWithItemsHandler release];
  [super dealloc];
}

@synthesize excludedActivityTypes = _excludedActivityTypes;
@synthesize completionWithItemsHandler = _completionWithItemsHandler;

- (NSArray *)activityItems {
  return _activityItems;
}

- (void)viewWillAppear:(BOOL)animated {
  [super viewWillAppear:animated];
  NSArray *const before = _offered;
  _offered = [[self qvdevice_list] copy];
  [before release];
  shown = self;
  NSMutableArray *const types = [NSMutableArray array];
  for (UIActivity *activity in _offered)
    [types addObject:[activity activityType] ? [activity activityType] : (id)[NSNull null]];
  QVDeviceTrace(@{@"kind" : @"sheet", @"event" : @"shown", @"offered" : types});
}

- (void)viewDidDisappear:(BOOL)animated {
  [super viewDidDisappear:animated];
  if (shown != self) return;
  shown = nil;
  QVDeviceTrace(@{@"kind" : @"sheet", @"event" : @"dismissed"});
}

@end

@implementation UIActivityViewController (QVDeviceShareSheet)

+ (UIActivityViewController *)qvdevice_shown {
  return shown;
}

- (NSArray *)qvdevice_offered {
  return _offered;
}

- (NSArray *)qvdevice_items {
  return _activityItems;
}

- (void)qvdevice_choose:(UIActivity *)activity {
  // The sheet may go while the activity is being performed.
  [[self retain] autorelease];
  [self qvdevice_performChosen:activity];
}

@end

@implementation UIActivityViewController (QVDevicePlatform)

- (NSMutableArray *)qvdevice_activitiesForItems:(NSArray *)items {
  NSMutableArray *const all = QVDeviceActivities(), *const found = [NSMutableArray array];
  [all addObjectsFromArray:_applicationActivities];
  for (UIActivity *activity in all) {
    UIActivityType const type = [activity activityType];
    if ([activity canPerformWithActivityItems:items] && !(type && [_excludedActivityTypes containsObject:type]))
      [found addObject:activity];
  }
  return found;
}

- (void)qvdevice_perform:(UIActivity *)activity {
  UIActivityType const type = [activity activityType];
  [activity qvdevice_performWithItems:_activityItems finished:^(BOOL completed) {
    QVDeviceTrace(@{
      @"kind" : @"sheet",
      @"event" : @"performed",
      @"type" : type ? type : (id)[NSNull null],
      @"completed" : [NSNumber numberWithBool:completed]
    });
    [self dismissViewControllerAnimated:YES completion:nil];
    if (_completionWithItemsHandler) _completionWithItemsHandler(type, completed, nil, nil);
  }];
}

@end
