#pragma once

#import <CoreGraphics/CGImage.h>

/// Owned; NULL, with the reason on standard error, for what is no PNG or a damaged one. Grey without alpha stays grey.
CGImageRef QVImageCreateWithPNG(NSData *data);
/// Nil, with the reason on standard error, without memory.
NSData *QVImagePNG(CGImageRef image);
