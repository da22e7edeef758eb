// Reading and writing PNG. What is read has been written by libpng's own functions, row by row, not by the device.
#import "Graphics.h"

#include <png.h>
#include <zlib.h>

#include <unistd.h>

#include <cstdlib>
#include <string>

using support::Picture;
using support::Pixel;

namespace {

class PNG : public Graphics {};

/// A file of these bytes a pixel, of a colour type and depth of libpng's.
NSData *file(png_uint_32 width, png_uint_32 height, int type, int depth, const std::vector<std::uint8_t> &bytes) {
  NSMutableData *const data = [NSMutableData data];
  png_structp writer = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(writer);
  png_set_write_fn(
      writer, data,
      [](png_structp which, png_bytep from, size_t length) {
        [static_cast<NSMutableData *>(png_get_io_ptr(which)) appendBytes:from length:length];
      }, [](png_structp) {});
  png_set_IHDR(writer, info, width, height, depth, type, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  const png_color colors[] = {{1, 2, 3}, {4, 5, 6}};
  if (type == PNG_COLOR_TYPE_PALETTE) png_set_PLTE(writer, info, colors, 2);
  png_write_info(writer, info);
  for (png_uint_32 y = 0; y < height; ++y) {
    png_write_row(writer, bytes.data() + y * bytes.size() / height);
  }
  png_write_end(writer, info);
  png_destroy_write_struct(&writer, &info);
  return data;
}

Pixel shown(NSData *data) {
  UIImage *const image = [UIImage imageWithData:data];
  CGContextRef context = graphics::context(1, 1);
  CGContextDrawImage(context, CGRectMake(0, 0, 1, 1), [image CGImage]);
  return image ? graphics::drawn(context).at(0, 0) : Pixel{9, 9, 9, 9};
}

TEST_F(PNG, isReadInEveryColourType) {
  EXPECT_EQ(shown(file(1, 1, PNG_COLOR_TYPE_RGB, 8, {1, 2, 3})), (Pixel{3, 2, 1, 255}));
  EXPECT_EQ(shown(file(1, 1, PNG_COLOR_TYPE_RGB_ALPHA, 8, {255, 0, 100, 51})), (Pixel{20, 0, 51, 51}));
  EXPECT_EQ(shown(file(1, 1, PNG_COLOR_TYPE_GRAY, 8, {7})), (Pixel{7, 7, 7, 255}));
  EXPECT_EQ(shown(file(1, 1, PNG_COLOR_TYPE_GRAY_ALPHA, 8, {255, 51})), (Pixel{51, 51, 51, 51}));
  EXPECT_EQ(shown(file(1, 1, PNG_COLOR_TYPE_PALETTE, 8, {1})), (Pixel{6, 5, 4, 255}));
}

TEST_F(PNG, tellsWhetherItHasAlpha) {
  const auto alpha = [](NSData *data) { return CGImageGetAlphaInfo([[UIImage imageWithData:data] CGImage]); };
  EXPECT_EQ(alpha(file(1, 1, PNG_COLOR_TYPE_RGB, 8, {1, 2, 3})), kCGImageAlphaNoneSkipLast);
  EXPECT_EQ(alpha(file(1, 1, PNG_COLOR_TYPE_RGB_ALPHA, 8, {1, 2, 3, 4})), kCGImageAlphaLast);
  EXPECT_EQ(alpha(file(1, 1, PNG_COLOR_TYPE_GRAY, 8, {1})), kCGImageAlphaNone);
  EXPECT_EQ(alpha(file(1, 1, PNG_COLOR_TYPE_GRAY_ALPHA, 8, {1, 2})), kCGImageAlphaLast);
  EXPECT_EQ(alpha(file(1, 1, PNG_COLOR_TYPE_PALETTE, 8, {1})), kCGImageAlphaNoneSkipLast);
}

TEST_F(PNG, comesBackAsItWasWritten) {
  // What is multiplied by an alpha keeps its value when that is divided out and multiplied in again.
  for (const bool opaque : {true, false}) {
    const Picture picture = support::noise(33, 21, opaque);
    UIImage *const read = [UIImage imageWithData:UIImagePNGRepresentation(support::imageOf(picture, 1, opaque))];
    CGContextRef context = graphics::context(33, 21);
    CGContextDrawImage(context, CGRectMake(0, 0, 33, 21), [read CGImage]);
    EXPECT_EQ(graphics::drawn(context), picture);
  }
  UIImage *const grey = support::grayImage(5, 3, [](size_t x, size_t y) { return static_cast<uint8_t>(x * 50 + y); });
  CGImageRef read = [[UIImage imageWithData:UIImagePNGRepresentation(grey)] CGImage];
  EXPECT_EQ(CGImageGetBitsPerPixel(read), 8u);
  NSData *const pixels = [(NSData *)CGDataProviderCopyData(CGImageGetDataProvider(read)) autorelease];
  EXPECT_TRUE([pixels isEqual:[(NSData *)CGDataProviderCopyData(CGImageGetDataProvider([grey CGImage])) autorelease]]);
}

TEST_F(PNG, hasTheScaleThatItsNameTells) {
  NSData *const data = file(1, 1, PNG_COLOR_TYPE_GRAY, 8, {7});
  const auto scale = [data](NSString *name) {
    NSString *const path = [NSTemporaryDirectory() stringByAppendingPathComponent:name];
    [data writeToFile:path atomically:NO];
    return [[UIImage imageWithContentsOfFile:path] scale];
  };
  EXPECT_EQ(scale(@"one.png"), 1);
  EXPECT_EQ(scale(@"two@2x.png"), 2);
  EXPECT_EQ(scale(@"three@3x.png"), 3);
}

TEST_F(PNG, thatIsDamagedOrNoneGivesNoImage) {
  NSData *const good = file(20, 20, PNG_COLOR_TYPE_RGB, 8, std::vector<std::uint8_t>(1200, 77));
  ASSERT_NE([UIImage imageWithData:good], nil);
  for (NSUInteger length = 0; length < [good length] - 12; ++length) { // the last chunk says only that it is the last
    EXPECT_EQ([UIImage imageWithData:[good subdataWithRange:NSMakeRange(0, length)]], nil) << length;
  }
  EXPECT_EQ([UIImage imageWithData:[@"GIF89a and what not" dataUsingEncoding:NSUTF8StringEncoding]], nil);
  NSMutableData *const broken = [NSMutableData dataWithData:good];
  static_cast<std::uint8_t *>([broken mutableBytes])[50] ^= 0x40;
  EXPECT_EQ([UIImage imageWithData:broken], nil);
}

/// A good file of one pixel whose header claims another size. Its check sum is right.
NSData *claiming(std::uint32_t width, std::uint32_t height) {
  NSMutableData *const data = [NSMutableData dataWithData:file(1, 1, PNG_COLOR_TYPE_RGB, 8, {1, 2, 3})];
  const auto put = [data](NSUInteger at, std::uint32_t number) {
    const std::uint32_t bytes = NSSwapHostIntToBig(number);
    [data replaceBytesInRange:NSMakeRange(at, 4) withBytes:&bytes];
  };
  put(16, width);
  put(20, height);
  const auto *const header = static_cast<const Bytef *>([data bytes]) + 12; // from the chunk's name on
  put(29, static_cast<std::uint32_t>(crc32(0, header, 17)));
  return data;
}

/// What goes to standard error while a file is read that gives no image.
std::string refusal(NSData *data) {
  std::string path = [[NSTemporaryDirectory() stringByAppendingPathComponent:@"refusal.XXXXXX"] UTF8String];
  const int file = mkstemp(path.data());
  EXPECT_GE(file, 0);
  const int before = dup(STDERR_FILENO);
  dup2(file, STDERR_FILENO);
  UIImage *const image = [UIImage imageWithData:data];
  dup2(before, STDERR_FILENO);
  close(before);
  EXPECT_EQ(image, nil);
  char text[200] = "";
  EXPECT_GT(pread(file, text, sizeof text - 1, 0), 0);
  close(file);
  unlink(path.c_str());
  return text;
}

TEST_F(PNG, thatClaimsToBeEnormousGivesNoImage) {
  ASSERT_EQ(shown(claiming(1, 1)), (Pixel{3, 2, 1, 255})); // nothing else is wrong with it
  EXPECT_EQ(refusal(claiming(1000001, 1)), "PNG: Invalid IHDR data\n");
  EXPECT_EQ(refusal(claiming(0x7fffffff, 0x7fffffff)), "PNG: Invalid IHDR data\n");
}

TEST_F(PNG, thatClaimsMorePixelsThanItCanHoldGivesNoImageAndTakesNoMemory) {
  const std::string why = "PNG: the file is too short for the size that it claims\n";
  EXPECT_EQ(refusal(claiming(900000, 900000)), why);
  EXPECT_EQ(refusal(claiming(30000, 30000)), why); // which there would be memory for
}

TEST_F(PNG, isReadWhenItHoldsAsManyPixelsAsAFileOfItsLengthCan) {
  // One bit each, all of them 0 like the bytes that name a row's filter: nothing is deflated further.
  NSData *const data = file(8000, 4000, PNG_COLOR_TYPE_GRAY, 1, std::vector<std::uint8_t>(4000000));
  EXPECT_LT([data length], 4000000u / 900);
  EXPECT_EQ(CGImageGetWidth([[UIImage imageWithData:data] CGImage]), 8000u);
}

} // namespace
