#import "Effects.h"

#include <regex>

@implementation QVSizedImage

+ (UIImage *)imageWithSize:(CGSize)size {
  QVSizedImage *const image = [[[self alloc] init] autorelease];
  image->_size = size;
  return image;
}

- (CGSize)size {
  return _size;
}

@end

namespace {

std::vector<std::string> *lines = nullptr;
NSLog_printf_handler *before = nullptr;

void listen(NSString *message) {
  static const std::regex form("^[^\\n]*?\\[[0-9:]+\\] ([^\\0]*)\\n$");
  const std::string text = [message UTF8String];
  std::smatch parts;
  lines->push_back(std::regex_match(text, parts, form) ? parts[1].str() : "strange: " + text);
}

} // namespace

Class effects() { return NSClassFromString(@"UIImageEffects"); }

void Effects::SetUp() {
  pool = [[NSAutoreleasePool alloc] init];
  lines = new std::vector<std::string>;
  before = _NSLog_printf_handler;
  _NSLog_printf_handler = &listen;
  ASSERT_NE(effects(), nil);
  EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
}

void Effects::TearDown() {
  // Each context that was begun has been ended.
  EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
  _NSLog_printf_handler = before;
  delete lines;
  [pool drain];
}

std::vector<std::string> Effects::log() { return *lines; }

void Effects::clearLog() { lines->clear(); }

void Effects::drain() {
  [pool drain];
  pool = [[NSAutoreleasePool alloc] init];
}
