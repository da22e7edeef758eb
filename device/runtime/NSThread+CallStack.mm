// +[NSThread callStackReturnAddresses] as the platform answers it: numbers, the first being the address to which this
// method returns. Foundation's own drops frames and answers pointer values.

#import <Foundation/Foundation.h>
#include <objc/runtime.h>
#include <unwind.h>

#include <array>
#include <cstdint>

#include "runtime/Methods.h"

namespace {

struct Frames {
  std::uintptr_t first;
  std::size_t count = 0;
  std::array<std::uintptr_t, 512> addresses;
};

_Unwind_Reason_Code addFrame(_Unwind_Context *context, void *argument) {
  auto &frames = *static_cast<Frames *>(argument);
  const std::uintptr_t address = _Unwind_GetIP(context);
  // The device's own frames come first and are nobody's business.
  if (address == 0 || (frames.count == 0 && address != frames.first)) return _URC_NO_REASON;
  frames.addresses[frames.count++] = address;
  return frames.count == frames.addresses.size() ? _URC_END_OF_STACK : _URC_NO_REASON;
}

id NSThread_callStackReturnAddresses(id, SEL) {
  Frames frames;
  frames.first = reinterpret_cast<std::uintptr_t>(__builtin_return_address(0));
  _Unwind_Backtrace(addFrame, &frames);
  NSMutableArray *const answer = [NSMutableArray arrayWithCapacity:frames.count];
  for (std::size_t i = 0; i < frames.count; ++i) {
    [answer addObject:[NSNumber numberWithUnsignedLong:frames.addresses[i]]];
  }
  return answer;
}

__attribute__((constructor(102))) void takeOverTheCallStack() {
  const Method method = class_getClassMethod(objc_getClass("NSThread"), sel_registerName("callStackReturnAddresses"));
  method_setImplementation(method, qvdevice::asImplementation(NSThread_callStackReturnAddresses));
}

} // namespace
