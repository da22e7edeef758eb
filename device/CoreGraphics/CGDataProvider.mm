#import <CoreGraphics/CGDataProvider.h>

#import "CoreGraphics/DataProviders.h"

@interface QVCGDataProvider : NSObject {
@public
  void *_info;
  const void *_bytes;
  size_t _size;
  CGDataProviderReleaseDataCallback _releaseData;
}
@end

@implementation QVCGDataProvider

- (void)dealloc {
  if (_releaseData) _releaseData(_info, _bytes, _size);
  [super dealloc];
}

@end

static QVCGDataProvider *objectOf(CGDataProviderRef provider) { return (QVCGDataProvider *)provider; }

CGDataProviderRef CGDataProviderCreateWithData(void *info, const void *data, size_t size,
                                               CGDataProviderReleaseDataCallback releaseData) {
  if (data == nullptr) return nullptr;
  QVCGDataProvider *const provider = [[QVCGDataProvider alloc] init];
  provider->_info = info;
  provider->_bytes = data;
  provider->_size = size;
  provider->_releaseData = releaseData;
  return (CGDataProviderRef)provider;
}

static void releaseObject(void *info, const void *, size_t) { CFRelease(info); }

CGDataProviderRef CGDataProviderCreateWithCFData(CFDataRef data) {
  NSData *const copy = [(NSData *)data copy];
  CGDataProviderRef provider = CGDataProviderCreateWithData(copy, [copy bytes], [copy length], &releaseObject);
  if (provider == nullptr) [copy release]; // of no bytes
  return provider;
}

CFDataRef CGDataProviderCopyData(CGDataProviderRef provider) {
  if (provider == nullptr) return nullptr;
  return (CFDataRef)[[NSData alloc] initWithBytes:QVDataProviderBytes(provider) length:QVDataProviderSize(provider)];
}

CGDataProviderRef CGDataProviderRetain(CGDataProviderRef provider) {
  return (CGDataProviderRef)[objectOf(provider) retain];
}

void CGDataProviderRelease(CGDataProviderRef provider) { [objectOf(provider) release]; }

const void *QVDataProviderBytes(CGDataProviderRef provider) { return provider ? objectOf(provider)->_bytes : nullptr; }

size_t QVDataProviderSize(CGDataProviderRef provider) { return provider ? objectOf(provider)->_size : 0; }
