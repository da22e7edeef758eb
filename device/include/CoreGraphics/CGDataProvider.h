#pragma once

#import <CoreGraphics/CGBase.h>

typedef struct CGDataProvider* CGDataProviderRef;
typedef void (*CGDataProviderReleaseDataCallback)(void* info, const void* data, size_t size);

/// The data is not copied; `releaseData` is called once when nobody needs it any longer. NULL without data.
CG_EXTERN CGDataProviderRef CGDataProviderCreateWithData(void* info, const void* data, size_t size,
                                                         CGDataProviderReleaseDataCallback releaseData);
CG_EXTERN CGDataProviderRef CGDataProviderCreateWithCFData(CFDataRef data);
/// NULL for NULL.
CG_EXTERN CFDataRef CGDataProviderCopyData(CGDataProviderRef provider);
CG_EXTERN CGDataProviderRef CGDataProviderRetain(CGDataProviderRef provider);
CG_EXTERN void CGDataProviderRelease(CGDataProviderRef provider);
