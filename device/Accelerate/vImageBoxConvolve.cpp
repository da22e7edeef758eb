#include <Accelerate/Convolution.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "Accelerate/BoxBlur.h"
#include "Accelerate/Pixels.h"
#include "Accelerate/Workers.h"

namespace {

using namespace qvdevice;

constexpr vImage_Flags kEdgeStyles =
    kvImageCopyInPlace | kvImageBackgroundColorFill | kvImageEdgeExtend | kvImageTruncateKernel;
constexpr vImage_Flags kKnownFlags = kEdgeStyles | kvImageDoNotTile | kvImageGetTempBufferSize;

/// No memory has a temporary buffer for wider rows, and up to here its size can be computed.
constexpr std::size_t kWidest = std::size_t{1} << 48;

/// What is wrong with the arguments, but for the memory that is behind the buffers.
vImage_Error errorIn(const vImage_Buffer& src, const vImage_Buffer& dest, const BoxBlur& blur, vImage_Flags flags) {
  if ((flags & ~kKnownFlags) != 0) return kvImageUnknownFlagsBit;
  if ((flags & kEdgeStyles) != kvImageEdgeExtend) return kvImageInvalidEdgeStyle;
  if (blur.boxWidth % 2 == 0 || blur.boxHeight % 2 == 0) return kvImageInvalidKernelSize;
  if (dest.width > src.width || dest.height > src.height) return kvImageRoiLargerThanInputBuffer;
  if (blur.x > src.width - dest.width) return kvImageInvalidOffset_X;
  if (blur.y > src.height - dest.height) return kvImageInvalidOffset_Y;
  if (!hasValidRows(src) || !hasValidRows(dest)) return kvImageInvalidRowBytes;
  if (src.width > kWidest) return kvImageMemoryAllocationError;
  return kvImageNoError;
}

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};

void* aligned(void* memory) {
  const auto address = reinterpret_cast<std::uintptr_t>(memory);
  return reinterpret_cast<void*>((address + kScratchAlignment - 1) / kScratchAlignment * kScratchAlignment);
}

/// How the work is shared: each part has scratch memory of its own.
struct Plan {
  const BoxBlur& blur;
  bool narrow;
  std::size_t parts;
  std::size_t scratchOfPart;

  /// Whatever the flags are, so that a size that was asked for with others is enough.
  explicit Plan(const BoxBlur& all)
      : blur(all), narrow(isNarrowBlur(all)),
        // Each part adds up a box of rows before its first, so it should have more than these.
        parts(partsFor(all.height, all.width, std::size_t{all.boxHeight} * 2)),
        scratchOfPart(narrow ? narrowScratch(all) : wideScratch(all)) {}

  std::size_t tempBufferSize() const { return parts * scratchOfPart + kScratchAlignment; }

  void carryOut(void* scratch, std::size_t threads) const {
    const struct {
      const Plan& plan;
      std::size_t parts;
      std::byte* scratch;
    } work = {.plan = *this, .parts = threads, .scratch = static_cast<std::byte*>(scratch)};
    shareAmongWorkers(threads, [&work](std::size_t part) {
      const BoxBlur& whole = work.plan.blur;
      (work.plan.narrow ? blurRowsNarrow : blurRowsWide)(whole, firstRow(part, work.parts, whole.height),
                                                         firstRow(part + 1, work.parts, whole.height),
                                                         work.scratch + part * work.plan.scratchOfPart);
    });
  }
};

} // namespace

vImage_Error vImageBoxConvolve_ARGB8888(const vImage_Buffer* src, const vImage_Buffer* dest, void* tempBuffer,
                                        vImagePixelCount srcOffsetToROI_X, vImagePixelCount srcOffsetToROI_Y,
                                        uint32_t kernel_height, uint32_t kernel_width,
                                        const Pixel_8888 /*backgroundColor*/, vImage_Flags flags) {
  if (src == nullptr || dest == nullptr) return kvImageNullPointerArgument;
  const bool onlySize = (flags & kvImageGetTempBufferSize) != 0;
  if (!onlySize && (src->data == nullptr || dest->data == nullptr)) return kvImageNullPointerArgument;

  const BoxBlur blur = {.src = static_cast<const std::uint8_t*>(src->data),
                        .srcRowBytes = src->rowBytes,
                        .srcWidth = src->width,
                        .srcHeight = src->height,
                        .x = srcOffsetToROI_X,
                        .y = srcOffsetToROI_Y,
                        .dest = static_cast<std::uint8_t*>(dest->data),
                        .destRowBytes = dest->rowBytes,
                        .width = dest->width,
                        .height = dest->height,
                        .boxWidth = kernel_width,
                        .boxHeight = kernel_height};
  if (const vImage_Error error = errorIn(*src, *dest, blur, flags); error != kvImageNoError) return error;
  if (blur.width == 0 || blur.height == 0) return kvImageNoError;

  const Plan plan(blur);
  if (onlySize) return static_cast<vImage_Error>(plan.tempBufferSize());
  if (overlap(*src, *dest)) return kvImageOutOfPlaceOperationRequired;

  std::unique_ptr<void, Free> own;
  if (tempBuffer == nullptr) {
    own.reset(std::malloc(plan.tempBufferSize()));
    if (!own) return kvImageMemoryAllocationError;
    tempBuffer = own.get();
  }
  plan.carryOut(aligned(tempBuffer), (flags & kvImageDoNotTile) != 0 ? 1 : plan.parts);
  return kvImageNoError;
}
