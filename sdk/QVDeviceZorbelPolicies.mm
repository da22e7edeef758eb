#import <Zorbel/QVDevicePolicies.h>

#include "Policies.h"

void QVDeviceZorbelSetPolicies(NSString *json) {
  NSString *reason = nil;
  const std::string text([json length] ? [json UTF8String] : "");
  zorbel::changePolicies([&](const zorbel::Policies &before) {
    auto result = zorbel::parsePolicies(text, before);
    if (const auto *refusal = std::get_if<zorbel::Refusal>(&result)) {
      reason = [NSString stringWithFormat:@"%lu:%lu: %s", static_cast<unsigned long>(refusal->line),
                                          static_cast<unsigned long>(refusal->column), refusal->reason.c_str()];
      return before;
    }
    return std::get<zorbel::Policies>(std::move(result));
  });
  // Not from within: C++ code of the SDK has no business with Objective-C's exceptions.
  if (reason) [NSException raise:NSInvalidArgumentException format:@"QVDeviceZorbelSetPolicies: %@", reason];
}
