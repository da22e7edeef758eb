// Frosted glass: copies of an image, blurred, with their colours changed and a tint laid over them.
#pragma once

#include "../platform/UIKit/UIColor.hpp"
#include "../platform/UIKit/UIImage.hpp"

/// The release callback of images that are made of pixels without copying them: frees `bufferData`.
QVSB_EXPORT void cleanupBuffer(void* userData, void* bufferData);

namespace qvsb {

/// Each gives a new image of the same size and scale, or nil after a line in the platform's log. Any thread.
class UIImageEffects : public NSObject {
  QVSB_HANDLE(UIImageEffects, NSObject)

  QVSB_CLASS_METHOD(UIImage, imageByApplyingLightEffectToImage, "imageByApplyingLightEffectToImage:", UIImage)
  QVSB_CLASS_METHOD(UIImage, imageByApplyingExtraLightEffectToImage, "imageByApplyingExtraLightEffectToImage:", UIImage)
  QVSB_CLASS_METHOD(UIImage, imageByApplyingDarkEffectToImage, "imageByApplyingDarkEffectToImage:", UIImage)

  /// The colour is laid over as if it had an alpha of 0.6; one whose components cannot be read, as it is.
  QVSB_CLASS_METHOD(UIImage, imageByApplyingTintEffectWithColor_toImage,
                    "imageByApplyingTintEffectWithColor:toImage:", UIColor, UIImage)

  /// The radius is in points; none that is not a positive number blurs. A saturation of 1 leaves the colours, one that
  /// is no number does too. What is out of range counts as the nearest that is in it: a box that is too large for 32
  /// bits, a factor whose matrix is too large for 16. Colour and mask may be nil; with a mask, the image stays as it is
  /// where the mask lets nothing through, but for the tint.
  QVSB_CLASS_METHOD(UIImage, imageByApplyingBlurToImage_withRadius_tintColor_saturationDeltaFactor_maskImage,
                    "imageByApplyingBlurToImage:withRadius:tintColor:saturationDeltaFactor:maskImage:", UIImage,
                    CGFloat, UIColor, CGFloat, UIImage)
};

Class registerUIImageEffects();

} // namespace qvsb
