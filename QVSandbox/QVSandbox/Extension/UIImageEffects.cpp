#include "UIImageEffects.hpp"

#include <utility>

#include "../platform/Foundation/NSLog.hpp"
#include "../platform/UIKit/UIGraphics.hpp"
#include "../platform/objc/implement.hpp"
#include "EffectArithmetic.hpp"
#include "PixelBuffer.hpp"

void cleanupBuffer(void* /*userData*/, void* bufferData) { qvsb::free(bufferData); }

namespace qvsb {

namespace {

struct Effect {
  CGFloat radius;
  CGFloat saturation;
  UIImage mask;
};

bool canBeWorkedOn(UIImage image, UIImage mask) {
  const CGSize size = image.size();
  const bool isLargeEnough = size.width >= 1 && size.height >= 1; // what is no number is not
  if (!isLargeEnough) {
    NSLog("*** error: invalid size: (%.2f x %.2f). Both dimensions must be >= 1: %@"_ns, size.width, size.height,
          image);
    return false;
  }
  if (!image.CGImage()) {
    NSLog("*** error: inputImage must be backed by a CGImage: %@"_ns, image);
    return false;
  }
  if (mask && !mask.CGImage()) {
    NSLog("*** error: effectMaskImage must be backed by a CGImage: %@"_ns, mask);
    return false;
  }
  return true;
}

bool isOpaque(CGImageRef bitmap) {
  const CGBitmapInfo alpha = CGImageGetBitmapInfo(bitmap) & kCGBitmapAlphaInfoMask;
  return alpha == kCGImageAlphaNone || alpha == kCGImageAlphaNoneSkipLast || alpha == kCGImageAlphaNoneSkipFirst;
}

/// Three passes, each both ways, from the first buffer into the second and to and fro.
vImage_Error blur(const PixelBuffer& from, const PixelBuffer& to, std::uint32_t box) {
  const auto pass = [box](const PixelBuffer& source, const PixelBuffer& target, void* memory, vImage_Flags flags) {
    return vImageBoxConvolve_ARGB8888(source.get(), target.get(), memory, 0, 0, box, box, nullptr, flags);
  };
  const vImage_Error size = pass(from, to, nullptr, kvImageGetTempBufferSize | kvImageEdgeExtend);
  // Without it each pass makes do with memory of its own.
  void* const memory = size > 0 ? malloc(static_cast<std::size_t>(size)) : nullptr;
  vImage_Error error = pass(from, to, memory, kvImageEdgeExtend);
  if (error == kvImageNoError) {
    error = pass(to, from, memory, kvImageEdgeExtend);
  }
  if (error == kvImageNoError) {
    error = pass(from, to, memory, kvImageEdgeExtend);
  }
  free(memory);
  return error;
}

vImage_Error saturate(const PixelBuffer& from, const PixelBuffer& to, CGFloat factor) {
  return vImageMatrixMultiply_ARGB8888(from.get(), to.get(), saturationMatrix(factor).data(), kSaturationDivisor,
                                       nullptr, nullptr, kvImageNoFlags);
}

/// Says whether the step went well, and in the log if it did not.
bool succeeded(vImage_Error error, NSString complaint, UIImage image) {
  if (error != kvImageNoError) {
    NSLog(complaint, error, image);
  }
  return error == kvImageNoError;
}

/// Blurred and with its colours changed, as far as the effect asks for it. Owned by the caller; null after a line in
/// the log.
CGImageRef createEffectImage(UIImage image, const Effect& effect) {
  PixelBuffer first;
  PixelBuffer second;
  if (!succeeded(first.load(image.CGImage()),
                 "*** error: vImageBuffer_InitWithCGImage returned error code %zi for inputImage: %@"_ns, image) ||
      !succeeded(second.makeLike(first), "*** error: vImageBuffer_Init returned error code %zi for inputImage: %@"_ns,
                 image)) {
    return nullptr;
  }
  PixelBuffer* input = &first;
  PixelBuffer* output = &second;
  if (isBlur(effect.radius)) {
    if (!succeeded(blur(*input, *output, boxSize(effect.radius * image.scale())),
                   "*** error: vImageBoxConvolve_ARGB8888 returned error code %zi for inputImage: %@"_ns, image)) {
      return nullptr;
    }
    std::swap(input, output);
  }
  if (isSaturationChange(effect.saturation)) {
    if (!succeeded(saturate(*input, *output, effect.saturation),
                   "*** error: vImageMatrixMultiply_ARGB8888 returned error code %zi for inputImage: %@"_ns, image)) {
      return nullptr;
    }
    std::swap(input, output);
  }
  vImage_Error error = kvImageNoError;
  CGImageRef made = input->turnIntoImage(error);
  if (!made) {
    NSLog("*** error: vImageCreateCGImageFromBuffer returned error code %zi for inputImage: %@"_ns, error, image);
  }
  return made;
}

bool drawEffect(CGContextRef context, CGRect whole, UIImage image, const Effect& effect) {
  CGImageRef made = createEffectImage(image, effect);
  if (!made) {
    return false;
  }
  if (effect.mask) {
    CGContextDrawImage(context, whole, image.CGImage());
  }
  {
    const SavedGState saved(context);
    if (effect.mask) {
      CGContextClipToMask(context, whole, effect.mask.CGImage());
    }
    CGContextDrawImage(context, whole, made);
  }
  CGImageRelease(made);
  return true;
}

void lay(UIColor tint, CGContextRef context, CGRect whole) {
  const SavedGState saved(context);
  CGContextSetFillColorWithColor(context, tint.CGColor());
  CGContextFillRect(context, whole);
}

UIImage apply(UIImage image, UIColor tint, const Effect& effect) {
  if (!canBeWorkedOn(image, effect.mask)) {
    return nullptr;
  }
  const CGRect whole{{0, 0}, image.size()};
  const ImageContext imageContext(whole.size, isOpaque(image.CGImage()), image.scale());
  CGContextRef context = imageContext.get();
  if (!context) {
    return nullptr;
  }
  CGContextScaleCTM(context, 1, -1);
  CGContextTranslateCTM(context, 0, -whole.size.height);
  if (isBlur(effect.radius) || isSaturationChange(effect.saturation)) {
    if (!drawEffect(context, whole, image, effect)) {
      return nullptr;
    }
  } else {
    CGContextDrawImage(context, whole, image.CGImage());
  }
  if (tint) {
    lay(tint, context, whole);
  }
  return imageContext.image();
}

/// The colour as if it had that alpha, where its components can be read.
UIColor withAlpha(UIColor color, CGFloat alpha) {
  if (CGColorGetNumberOfComponents(color.CGColor()) == 2) {
    CGFloat white = 0;
    return color.getWhite_alpha(&white, nullptr) ? UIColor::colorWithWhite_alpha(white, alpha) : color;
  }
  CGFloat red = 0;
  CGFloat green = 0;
  CGFloat blue = 0;
  return color.getRed_green_blue_alpha(&red, &green, &blue, nullptr)
             ? UIColor::colorWithRed_green_blue_alpha(red, green, blue, alpha)
             : color;
}

class Implementation : public Implements<Implementation> {
public:
  static constexpr const char* className = "UIImageEffects";
  static constexpr const char* superclassName = "NSObject";

  static UIImage light(Class self, SEL, UIImage image) {
    return look(self, image, 60, UIColor::colorWithWhite_alpha(1.0, 0.3), 1.8);
  }

  static UIImage extraLight(Class self, SEL, UIImage image) {
    return look(self, image, 40, UIColor::colorWithWhite_alpha(0.97, 0.82), 1.8);
  }

  static UIImage dark(Class self, SEL, UIImage image) {
    return look(self, image, 40, UIColor::colorWithWhite_alpha(0.11, 0.73), 1.8);
  }

  static UIImage tint(Class self, SEL, UIColor color, UIImage image) {
    return look(self, image, 20, withAlpha(color, 0.6), -1.0);
  }

  static UIImage blurred(Class, SEL, UIImage image, CGFloat radius, UIColor tintColor, CGFloat saturationDeltaFactor,
                         UIImage mask) {
    return apply(image, tintColor, {radius, saturationDeltaFactor, mask});
  }

  static constexpr MethodEntry classMethods[] = {
      method<&Implementation::light>("imageByApplyingLightEffectToImage:"),
      method<&Implementation::extraLight>("imageByApplyingExtraLightEffectToImage:"),
      method<&Implementation::dark>("imageByApplyingDarkEffectToImage:"),
      method<&Implementation::tint>("imageByApplyingTintEffectWithColor:toImage:"),
      method<&Implementation::blurred>(
          "imageByApplyingBlurToImage:withRadius:tintColor:saturationDeltaFactor:maskImage:"),
  };

private:
  static UIImage look(Class self, UIImage image, CGFloat radius, UIColor tintColor, CGFloat saturation) {
    return send<UIImage>(self, "imageByApplyingBlurToImage:withRadius:tintColor:saturationDeltaFactor:maskImage:"_sel,
                         image, radius, tintColor, saturation, UIImage());
  }
};

} // namespace

Class registerUIImageEffects() { return registerClass<Implementation>(); }

} // namespace qvsb
