// Objective-C classes for the tests of the binding, written in Objective-C so that the compiler's own encodings,
// receivers and messages stand on the other side. They are found by name, as on a phone.
#import <Foundation/Foundation.h>
#import <UIKit/UIKit.h>

#include <atomic>

namespace {
std::atomic<int> liveProbes{0};
}

struct QVFive {
  double a, b, c, d, e;
};
struct QVSmall {
  int left;
  float right;
};

static const char *signatureOfBlock(id block) {
  struct Layout {
    void *isa;
    int flags, reserved;
    void *invoke;
    void **descriptor; // size words, then copy and dispose where the block has them, then the signature
  } *layout = (Layout *)(void *)block;
  if (!(layout->flags & (1 << 30))) return NULL;
  const int helpers = (layout->flags & (1 << 25)) ? 2 : 0;
  return (const char *)layout->descriptor[2 + helpers];
}

@interface QVProbe : NSObject {
  NSInteger _number;
  void (^_kept)(NSInteger);
}
@end

@implementation QVProbe
+ (int)live {
  return liveProbes;
}
- (id)init {
  if ((self = [super init])) {
    ++liveProbes;
  }
  return self;
}
- (void)dealloc {
  --liveProbes;
  if (_kept) Block_release(_kept);
  [super dealloc];
}
- (id)copyWithZone:(NSZone *)zone {
  QVProbe *copy = [[QVProbe allocWithZone:zone] init];
  copy->_number = _number + 1000;
  return copy;
}
- (NSInteger)number {
  return _number;
}
- (void)setNumber:(NSInteger)number {
  _number = number;
}
- (BOOL)yes {
  return YES;
}
- (char)charValue {
  return -7;
}
- (short)shortValue {
  return -300;
}
- (int)intValue {
  return -70000;
}
- (long long)longLongValue {
  return -5000000000LL;
}
- (unsigned long long)unsignedLongLongValue {
  return 18000000000000000000ULL;
}
- (float)floatValue {
  return 1.5f;
}
- (double)doubleValue {
  return 2.25;
}
- (SEL)selectorValue {
  return @selector(doubleValue);
}
- (Class)classValue {
  return [QVProbe class];
}
- (const char *)text {
  return "text";
}
- (void *)pointer {
  return self;
}
- (id)me {
  return self;
}
- (CGRect)rect {
  return CGRectMake(1, 2, 3, 4);
}
- (QVFive)five {
  QVFive five = {1, 2, 3, 4, 5};
  return five;
}
- (QVSmall)small {
  QVSmall small = {3, 0.5f};
  return small;
}
- (double)areaOf:(CGRect)rect times:(float)factor plus:(QVSmall)small {
  return rect.size.width * rect.size.height * factor + small.left + small.right;
}
- (NSInteger)sumOf:(BOOL)a
               and:(short)b
               and:(char)c
               and:(NSInteger)d
               and:(unsigned char)e
               and:(float)f
               and:(double)g
               and:(int)h
               and:(NSInteger)i {
  return (a ? 1 : 0) + b * 2 + c * 3 + d * 4 + e * 5 + (NSInteger)(f * 6) + (NSInteger)(g * 7) + h * 8 + i * 9;
}
- (NSString *)join:(NSString *)first, ... {
  NSMutableString *all = [NSMutableString stringWithString:first];
  va_list list;
  va_start(list, first);
  for (NSString *next = va_arg(list, NSString *); next; next = va_arg(list, NSString *)) {
    [all appendString:next];
  }
  va_end(list);
  return all;
}
- (NSString *)format:(NSString *)format, ... {
  va_list list;
  va_start(list, format);
  NSString *text = [[[NSString alloc] initWithFormat:format arguments:list] autorelease];
  va_end(list);
  return text;
}
- (BOOL)failInto:(NSError **)error {
  if (error) *error = [NSError errorWithDomain:@"QVProbe" code:42 userInfo:nil];
  return NO;
}
- (NSString *)greeting {
  return @"probe";
}
- (void)raise {
  [NSException raise:@"QVProbeException" format:@"raised by %@", [self greeting]];
}
- (void)throwNonException {
  @throw @"a string";
}
- (void)keep:(void (^)(NSInteger))block {
  _kept = Block_copy(block);
}
- (void)callKept:(NSInteger)with {
  _kept(with);
}
- (void)forget {
  Block_release(_kept);
  _kept = nil;
}
- (NSInteger (^)(NSInteger, NSInteger))adder {
  NSInteger base = _number;
  return [[^NSInteger(NSInteger a, NSInteger b) {
    return base + a + b;
  } copy] autorelease];
}
- (CGRect (^)(CGRect))mover {
  return [[^CGRect(CGRect r) {
    return CGRectMake(r.origin.x + 1, r.origin.y, r.size.width, r.size.height);
  } copy] autorelease];
}
- (CGRect)ask:(CGRect (^)(CGRect, BOOL))block with:(CGRect)rect {
  return block(rect, YES);
}
- (const char *)signatureOf:(id)block {
  return signatureOfBlock(block);
}
@end

@interface QVSubProbe : QVProbe
@end
@implementation QVSubProbe
- (NSString *)greeting {
  return @"sub";
}
- (CGRect)rect {
  return CGRectMake(9, 9, 9, 9);
}
@end

// What the compiler writes for signatures that the tests also write in C++.
@interface QVEncodingOracle : NSObject
@end
@implementation QVEncodingOracle
- (void)nothing {
}
- (BOOL)writeToFile:(NSString *)path atomically:(BOOL)flag {
  return path && flag;
}
- (bool)cppBool:(bool)a {
  return a;
}
- (void)integers:(char)a
               b:(signed char)b
               c:(unsigned char)c
               d:(short)d
               e:(unsigned short)e
               f:(int)f
               g:(unsigned)g
               h:(long)h
               i:(unsigned long)i
               j:(long long)j
               k:(unsigned long long)k {
}
- (double)reals:(float)a b:(double)b c:(CGFloat)c {
  return a + b + c;
}
- (Class)class:(Class)c selector:(SEL)s {
  return s ? c : Nil;
}
- (void)block:(void (^)(BOOL))block object:(id)object {
}
- (const char *)strings:(char *)a b:(const char *)b {
  return a ? a : b;
}
- (void *)pointers:(void *)a b:(const void *)b c:(NSError **)c d:(int *)d e:(double *)e f:(const int *)f g:(BOOL *)g {
  return a;
}
- (CGRect)rects:(CGRect)a b:(CGPoint)b c:(CGSize)c d:(BOOL)d e:(CGRect *)e {
  return a;
}
- (QVSmall)small:(QVSmall)small after:(short)s {
  return small;
}
- (NSUInteger)options:(NSUInteger)o operation:(NSInteger)p {
  return o + (NSUInteger)p;
}
@end
