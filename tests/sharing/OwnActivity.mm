#import "SharingTest.h"

@implementation QVOwnActivity

+ (instancetype)activityOfType:(id)type {
  QVOwnActivity *const activity = [[[self alloc] init] autorelease];
  activity->type = [type retain];
  return activity;
}

- (void)dealloc {
  [type release];
  [super dealloc];
}

- (UIActivityType)activityType {
  return type;
}

- (NSString *)activityTitle {
  return @"Own";
}

- (BOOL)canPerformWithActivityItems:(NSArray *)items {
  (void)items;
  return YES;
}

- (void)performActivity {
  ++performed;
  [self activityDidFinish:YES];
}

@end
