#include "Policy.h"

namespace {
int liveSDKs = 0;
}

@implementation QVTestSDK

+ (int)live {
  return liveSDKs;
}

- (instancetype)init {
  if ((self = [super init])) {
    ++liveSDKs;
    ready = YES;
    events = [[NSMutableArray alloc] init];
    results = [[NSMutableArray alloc] init];
  }
  return self;
}

- (void)dealloc {
  --liveSDKs;
  [openInWhitelist release];
  [appInfo release];
  [events release];
  [results release];
  [super dealloc];
}

- (BOOL)isReady {
  if (whenAskedWhetherReady) whenAskedWhetherReady();
  return ready;
}

- (NSInteger)openInPolicy {
  return openInPolicy;
}

- (NSInteger)pasteboardPolicy {
  return pasteboardPolicy;
}

- (NSInteger)printPolicy {
  return printPolicy;
}

- (id)openInWhitelist {
  return openInWhitelist;
}

- (NSDictionary *)getAppInfo {
  return appInfo;
}

- (void)sendEvent:(UIEvent *)event {
  [events addObject:event ? event : (id)[NSNull null]];
}

- (void)postPasscodeExtensionResult:(NSDictionary *)result {
  [results addObject:result ? result : (id)[NSNull null]];
}

@end

void Policy::SetUp() {
  pool_ = [[NSAutoreleasePool alloc] init];
  sdk = [[QVTestSDK alloc] init];
  util = [NSClassFromString(@"ZorbelUtil") instance];
  [util setZorbel:sdk];
}

void Policy::TearDown() {
  [util setRegisteredForPasteboardChangeNotification:NO];
  [util setPasteboardProxyForwardInvocationReturnAddress:0];
  releaseSDK();
  [pool_ drain];
}

void Policy::releaseSDK() {
  [sdk release];
  sdk = nil;
}

std::set<std::string> setOf(NSArray *strings) {
  std::set<std::string> texts;
  for (NSString *string in strings) {
    EXPECT_TRUE(texts.insert([string UTF8String]).second) << "twice: " << [string UTF8String];
  }
  return texts;
}
