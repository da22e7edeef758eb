#include "PasscodeExtensionAnswer.hpp"

#include "../platform/Foundation/NSExtensionItem.hpp"
#include "../platform/Foundation/NSNumber.hpp"
#include "../platform/Zorbel/Zorbel.hpp"

namespace qvsb {

namespace {

constexpr const char* kCompletion = "-[QVSBPasscodeExtensionWindowViewController displayExtension]_block_invoke";

/// The extension is another process: what it sent may be anything. nil for what is no dictionary.
NSDictionary answerIn(NSArray returnedItems) {
  const NSObject first = NSObject::from(returnedItems.firstObject());
  if (!first.respondsToSelector("userInfo"_sel)) {
    return nullptr;
  }
  const NSDictionary answer = NSExtensionItem::from(first).userInfo();
  return answer.isKindOfClass(NSDictionary::classObject()) ? answer : NSDictionary();
}

bool hasPassed(NSDictionary answer) {
  const NSString result = NSString::from(answer.valueForKey("result"_ns));
  return result.isKindOfClass(NSString::classObject()) && result.isEqualToString("TRUE"_ns);
}

} // namespace

NSDictionary passcodeExtensionResult(BOOL completed, NSArray returnedItems, NSError error) {
  const NSMutableDictionary result = NSMutableDictionary::dictionary();
  BOOL checkInRequired = YES;
  NSDictionary answer;
  if (!completed) {
    Zorbel::wrapperLogAtLevel_format(0, "%s: Passcode Extension failed with error: %@"_ns, kCompletion,
                                     error.localizedDescription());
  } else if (returnedItems.count() > 0) {
    answer = answerIn(returnedItems);
    if (hasPassed(answer)) {
      // Nothing stands in for what is missing: an extension that says so and does not is broken.
      result.setObject_forKey(answer.valueForKey("ak"_ns), "ak"_ns);
      result.setObject_forKey(answer.valueForKey("sk"_ns), "sk"_ns);
      checkInRequired = NO;
    }
  }
  Zorbel::wrapperLogAtLevel_format(2, "%s: Passcode Extension returned message: %@"_ns, kCompletion,
                                   answer.valueForKey("extensionMessage"_ns));
  result.setObject_forKey(NSNumber::numberWithBool(checkInRequired), "checkInRequired"_ns);
  return result;
}

} // namespace qvsb
