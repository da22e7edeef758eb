#import <Zorbel/QVDevicePolicies.h>

#include "Policies.h"
#import "Zorbel+Changes.h"

namespace {

zorbel::Change change(NSString *json, const char *function) {
  const std::string text([json length] ? [json UTF8String] : "");
  auto change =
      zorbel::changePolicies([&text](const zorbel::Policies &before) { return zorbel::parsePolicies(text, before); });
  // Not from within: C++ code of the SDK has no business with Objective-C's exceptions.
  if (const auto &refusal = change.refusal) {
    NSString *const reason =
        [NSString stringWithFormat:@"%s: %lu:%lu: %s", function, static_cast<unsigned long>(refusal->line),
                                   static_cast<unsigned long>(refusal->column), refusal->reason.c_str()];
    change.refusal.reset();
    [NSException raise:NSInvalidArgumentException format:@"%@", reason];
  }
  return change;
}

} // namespace

void QVDeviceZorbelSetPolicies(NSString *json) { change(json, __func__); }

void QVDeviceZorbelChangePolicies(NSString *json, NSString *message) {
  if (![NSThread isMainThread])
    [NSException raise:NSInternalInconsistencyException format:@"%s is for the main thread only", __func__];
  const zorbel::Change changed = change(json, __func__);
  [[Zorbel sharedInstance] tellChangesFrom:*changed.before to:*changed.now message:message];
}
