// vImage's way from an image to a buffer and back.
#import "Graphics.h"

#import <Accelerate/Accelerate.h>

#include <cstdlib>
#include <cstring>

using namespace graphics;
using support::Picture;
using support::Pixel;

namespace {

class Buffer : public Graphics {};

vImage_CGImageFormat format() {
  vImage_CGImageFormat result{};
  result.bitsPerComponent = 8;
  result.bitsPerPixel = 32;
  result.bitmapInfo = 8194;
  return result;
}

/// Frees its pixels.
struct Pixels : vImage_Buffer {
  Pixels() : vImage_Buffer{} {}
  ~Pixels() { std::free(data); }
  Picture picture() const {
    return Picture(width, height, [this](size_t x, size_t y) {
      Pixel pixel;
      std::memcpy(pixel.data(), static_cast<const char *>(data) + y * rowBytes + x * 4, 4);
      return pixel;
    });
  }
};

vImage_Error load(vImage_Buffer *buffer, vImage_CGImageFormat wanted, CGImageRef image, vImage_Flags flags = 0) {
  return vImageBuffer_InitWithCGImage(buffer, &wanted, nullptr, image, flags);
}

vImage_Error create(const vImage_Buffer *buffer, vImage_CGImageFormat wanted, vImage_Flags flags = 0) {
  vImage_Error error = 77;
  CGImageRef image = vImageCreateCGImageFromBuffer(buffer, &wanted, nullptr, nullptr, flags, &error);
  EXPECT_EQ(image != nullptr, error == kvImageNoError);
  CGImageRelease(image);
  return error;
}

TEST_F(Buffer, isMadeWithRowsThatBeginOnACacheLine) {
  Pixels buffer;
  ASSERT_EQ(vImageBuffer_Init(&buffer, 3, 17, 32, kvImageNoFlags), kvImageNoError);
  EXPECT_EQ(buffer.width, 17u);
  EXPECT_EQ(buffer.height, 3u);
  EXPECT_EQ(buffer.rowBytes, 128u);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(buffer.data) % 64, 0u);
  std::memset(buffer.data, 1, 3 * 128);
}

TEST_F(Buffer, thatIsNotAllocatedIsDescribedAndTellsTheAlignment) {
  std::uint8_t own = 0;
  vImage_Buffer buffer{&own, 0, 0, 0};
  EXPECT_EQ(vImageBuffer_Init(&buffer, 3, 17, 8, kvImageNoAllocate), 64);
  EXPECT_EQ(buffer.data, &own);
  EXPECT_EQ(buffer.width, 17u);
  EXPECT_EQ(buffer.height, 3u);
  EXPECT_EQ(buffer.rowBytes, 64u);
}

TEST_F(Buffer, thatCannotBeIsRefusedWithThePlatformsError) {
  vImage_Buffer buffer{};
  EXPECT_EQ(vImageBuffer_Init(nullptr, 1, 1, 32, 0), -21772);
  EXPECT_EQ(vImageBuffer_Init(&buffer, 1, 1, 32, 1U << 31), -21775);
  EXPECT_EQ(vImageBuffer_Init(&buffer, 0, 1, 32, 0), -21773);
  EXPECT_EQ(vImageBuffer_Init(&buffer, 1, 0, 32, 0), -21773);
  EXPECT_EQ(vImageBuffer_Init(&buffer, 1, 1, 0, 0), -21773);
  EXPECT_EQ(vImageBuffer_Init(&buffer, 1, SIZE_MAX, 32, 0), -21771);
  EXPECT_EQ(vImageBuffer_Init(&buffer, SIZE_MAX / 64, 16, 32, 0), -21771);
  EXPECT_EQ(vImageBuffer_Init(&buffer, 1UL << 40, 1UL << 20, 32, 0), -21771);
  EXPECT_EQ(buffer.data, nullptr);
}

TEST_F(Buffer, isLoadedFromAnImageOfAnyLayout) {
  const Picture picture = support::noise(19, 7, false);
  Pixels buffer;
  ASSERT_EQ(load(&buffer, format(), [support::imageOf(picture) CGImage], kvImagePrintDiagnosticsToConsole), 0);
  EXPECT_EQ(buffer.picture(), picture);

  const std::uint8_t straight[] = {255, 0, 100, 51}; // red, green, blue, alpha; not multiplied
  CGDataProviderRef provider = CGDataProviderCreateWithData(nullptr, straight, 4, nullptr);
  CGImageRef image = CGImageCreate(1, 1, 8, 32, 4, rgb(), 3, provider, nullptr, false, kCGRenderingIntentDefault);
  Pixels multiplied;
  ASSERT_EQ(load(&multiplied, format(), image), 0);
  EXPECT_EQ(multiplied.picture().at(0, 0), (Pixel{20, 0, 51, 51}));
  CGImageRelease(image);
  CGDataProviderRelease(provider);

  Pixels opaque;
  ASSERT_EQ(load(&opaque, format(), [support::grayImage(1, 1, [](size_t, size_t) { return 9; }) CGImage]), 0);
  EXPECT_EQ(opaque.picture().at(0, 0), (Pixel{9, 9, 9, 255}));
}

TEST_F(Buffer, isLoadedIntoTheCallersOwnMemory) {
  const Picture picture = support::noise(2, 2, false);
  std::vector<Pixel> memory(6);
  vImage_Buffer buffer{memory.data(), 2, 2, 12};
  ASSERT_EQ(load(&buffer, format(), [support::imageOf(picture) CGImage], kvImageNoAllocate), 0);
  EXPECT_EQ(buffer.data, memory.data());
  EXPECT_EQ(memory[3], picture.at(0, 1));
  vImage_Buffer other{memory.data(), 2, 1, 12};
  EXPECT_EQ(load(&other, format(), [support::imageOf(picture) CGImage], kvImageNoAllocate), -21774);
  vImage_Buffer none{nullptr, 2, 2, 12};
  EXPECT_EQ(load(&none, format(), [support::imageOf(picture) CGImage], kvImageNoAllocate), -21772);
  vImage_Buffer narrow{memory.data(), 2, 2, 7};
  EXPECT_EQ(load(&narrow, format(), [support::imageOf(picture) CGImage], kvImageNoAllocate), -21777);
}

TEST_F(Buffer, isNotLoadedFromWhatIsMissingOrWithFlagsThatAreNone) {
  vImage_Buffer buffer{};
  vImage_CGImageFormat wanted = format();
  CGImageRef image = [support::imageOf(support::noise(1, 1, true)) CGImage];
  EXPECT_EQ(vImageBuffer_InitWithCGImage(nullptr, &wanted, nullptr, image, 0), -21772);
  EXPECT_EQ(vImageBuffer_InitWithCGImage(&buffer, nullptr, nullptr, image, 0), -21772);
  EXPECT_EQ(vImageBuffer_InitWithCGImage(&buffer, &wanted, nullptr, nullptr, 0), -21772);
  EXPECT_EQ(vImageBuffer_InitWithCGImage(&buffer, &wanted, nullptr, image, 8), -21775);
  EXPECT_EQ(buffer.data, nullptr);
}

TEST_F(Buffer, ofAnotherFormatIsRefusedBothWays) {
  std::uint32_t memory = 0;
  vImage_Buffer buffer{&memory, 1, 1, 4};
  CGImageRef image = [support::imageOf(support::noise(1, 1, true)) CGImage];
  const CGFloat decode[] = {1, 0, 1, 0, 1, 0, 1, 0};
  std::vector<vImage_CGImageFormat> others(8, format());
  others[0].bitsPerComponent = 16;
  others[1].bitsPerPixel = 24;
  others[2].bitmapInfo = 8193;
  others[3].bitmapInfo = 2;
  others[4].version = 1;
  others[5].decode = decode;
  others[6].colorSpace = gray();
  others[7].bitmapInfo = 8194 | 256;
  for (size_t index = 0; index < others.size(); ++index) {
    EXPECT_EQ(load(&buffer, others[index], image), -21778) << index;
    EXPECT_EQ(create(&buffer, others[index]), -21778) << index;
  }
  vImage_CGImageFormat named = format();
  named.colorSpace = rgb();
  EXPECT_EQ(create(&buffer, named), 0);
}

TEST_F(Buffer, becomesAnImageOfACopy) {
  Picture picture = support::noise(5, 4, false);
  const Picture before = picture;
  const vImage_Buffer buffer{picture.pixels.data(), 4, 5, 20};
  vImage_CGImageFormat wanted = format();
  CGImageRef image = vImageCreateCGImageFromBuffer(&buffer, &wanted, nullptr, nullptr, kvImageNoFlags, nullptr);
  picture.pixels.assign(20, Pixel{});
  EXPECT_EQ(support::pictureOf([UIImage imageWithCGImage:image]), before);
  CGImageRelease(image);
}

struct Released {
  int times = 0;
  void *data = nullptr;
};

void note(void *userData, void *data) {
  auto *const released = static_cast<Released *>(userData);
  ++released->times;
  released->data = data;
}

TEST_F(Buffer, becomesAnImageOfItsOwnPixelsWhichAreReleasedOnceWithIt) {
  Picture picture = support::noise(5, 4, false);
  const vImage_Buffer buffer{picture.pixels.data(), 4, 5, 20};
  vImage_CGImageFormat wanted = format();
  Released released;
  CGImageRef image = vImageCreateCGImageFromBuffer(&buffer, &wanted, &note, &released, kvImageNoAllocate, nullptr);
  picture.at(1, 1) = Pixel{1, 2, 3, 4};
  EXPECT_EQ(support::pictureOf([UIImage imageWithCGImage:image]), picture);
  EXPECT_EQ(CGImageGetBitmapInfo(image), 8194u);
  EXPECT_EQ(released.times, 0);
  [[NSAutoreleasePool new] drain];
  CGImageRef other = CGImageRetain(image);
  CGImageRelease(image);
  EXPECT_EQ(released.times, 0);
  CGImageRelease(other);
  TearDown(); // what is autoreleased holds it too
  SetUp();
  EXPECT_EQ(released.times, 1);
  EXPECT_EQ(released.data, picture.pixels.data());
}

TEST_F(Buffer, thatIsTakenOverWithoutACallbackIsFreed) {
  Pixels buffer;
  ASSERT_EQ(vImageBuffer_Init(&buffer, 4, 4, 32, 0), 0);
  EXPECT_EQ(create(&buffer, format(), kvImageNoAllocate), 0);
  buffer.data = nullptr; // a leak here, or a second release, is the address sanitizer's to find
}

TEST_F(Buffer, thatBecomesNoImageStaysItsOwners) {
  std::uint32_t memory[4] = {};
  Released released;
  vImage_CGImageFormat wanted = format();
  const auto error = [&](vImage_Buffer buffer, vImage_Flags flags) {
    vImage_Error reason = 0;
    EXPECT_EQ(vImageCreateCGImageFromBuffer(&buffer, &wanted, &note, &released, flags, &reason), nullptr);
    return reason;
  };
  EXPECT_EQ(error({nullptr, 2, 2, 8}, kvImageNoAllocate), -21772);
  EXPECT_EQ(error({memory, 0, 2, 8}, kvImageNoAllocate), -21773);
  EXPECT_EQ(error({memory, 2, 0, 8}, kvImageNoAllocate), -21773);
  EXPECT_EQ(error({memory, 2, 2, 7}, kvImageNoAllocate), -21777);
  EXPECT_EQ(error({memory, SIZE_MAX / 8 + 2, 2, 8}, kvImageNoAllocate), -21777);
  EXPECT_EQ(error({memory, 2, 2, 8}, kvImageNoAllocate | 8), -21775);
  EXPECT_EQ(vImageCreateCGImageFromBuffer(nullptr, &wanted, &note, &released, kvImageNoAllocate, nullptr), nullptr);
  EXPECT_EQ(released.times, 0);
}

} // namespace
