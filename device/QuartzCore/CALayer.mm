#import <QuartzCore/CALayer.h>

@implementation CALayer

@synthesize cornerRadius = _cornerRadius;

@end
