#pragma once

#import <CoreGraphics/CGDataProvider.h>

/// NULL and 0 for NULL.
const void* QVDataProviderBytes(CGDataProviderRef provider);
size_t QVDataProviderSize(CGDataProviderRef provider);
