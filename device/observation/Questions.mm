#include "observation/Questions.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "observation/Decision.h"
#include "observation/Library.h"
#include "runtime/Methods.h"

namespace qvdevice {

namespace {

using Json = nlohmann::ordered_json;

// Whatever an app puts in the place of an identifier is not sent anything that the library does not send it: objects
// are known by their classes, and texts are read in a way that cannot raise.

bool isA(id object, Class kind) {
  for (Class cls = object_getClass(object); cls; cls = class_getSuperclass(cls))
    if (cls == kind) return true;
  return false;
}

Json describe(id object) {
  if (!object) return nullptr;
  if (!isA(object, [NSString class])) return std::string("<") + class_getName(object_getClass(object)) + ">";
  NSData *const text = [object dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
  return std::string(static_cast<const char *>([text bytes]), [text length]);
}

/// A set's elements come in no order of their own, so they are sorted.
Json describeAll(id objects) {
  if (!isA(objects, [NSArray class])) return describe(objects);
  std::vector<Json> all;
  for (id object in static_cast<NSArray *>(objects))
    all.push_back(describe(object));
  std::sort(all.begin(), all.end());
  return all;
}

/// Leaves nothing behind in the pool of whoever asks.
Json described(id object) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  Json description = describeAll(object);
  [pool release];
  return description;
}

using Plain = BOOL (*)(id, SEL);
using About = BOOL (*)(id, SEL, id);
using Merge = id (*)(id, SEL, id);

/// The library's own implementations, each of the one question whose wrapper asks it.
template <class Function, std::size_t Index> Function own = nullptr;

template <std::size_t Index> BOOL plain(id self, SEL selector) {
  Decision decision(sel_getName(selector));
  const BOOL answer = own<Plain, Index>(self, selector);
  decision.answer(answer != NO);
  return answer;
}

template <std::size_t Index> BOOL about(id self, SEL selector, id subject) {
  Decision decision(sel_getName(selector), described(subject));
  const BOOL answer = own<About, Index>(self, selector, subject);
  decision.answer(answer != NO);
  return answer;
}

/// Of the whole configuration, only what stands under the key was asked for.
BOOL underKey(id self, SEL selector, id key) {
  const Json name = described(key);
  Decision decision(sel_getName(selector), name);
  const BOOL answer = own<About, 2>(self, selector, key);
  if (name.is_string()) keepOfRead("config", name.get<std::string>());
  decision.answer(answer != NO);
  return answer;
}

id merged(id self, SEL selector, id types) {
  Decision decision(sel_getName(selector), described(types));
  id const answer = own<Merge, 0>(self, selector, types);
  decision.answer(described(answer));
  return answer;
}

template <class Function> void watch(Method method, Function wrapper, Function &original) {
  if (!method) return;
  const IMP implementation = method_getImplementation(method);
  // Somebody has been there before: the question is no longer the library's.
  if (!isInLibrary(reinterpret_cast<const void *>(implementation))) return;
  original = implementationAs<Function>(implementation);
  method_setImplementation(method, asImplementation(wrapper));
}

} // namespace

void watchQuestions() {
  Class const util = objc_lookUpClass("ZorbelUtil");
  Class const configuration = objc_lookUpClass("SBZorbelConfigHelper");
  const auto ofUtil = [&](const char *name) { return class_getInstanceMethod(util, sel_registerName(name)); };
  const auto ofConfiguration = [&](const char *name) {
    return class_getClassMethod(configuration, sel_registerName(name));
  };
  if (util) {
    watch<Plain>(ofUtil("allowsPasteboard"), plain<0>, own<Plain, 0>);
    watch<Plain>(ofUtil("allowsPrinting"), plain<1>, own<Plain, 1>);
    watch<About>(ofUtil("allowsOpenInWithAppId:"), about<0>, own<About, 0>);
    watch<About>(ofUtil("whitelistApprovedAppId:"), about<1>, own<About, 1>);
    watch<Merge>(ofUtil("mergeExcludedActivityTypes:"), merged, own<Merge, 0>);
  }
  if (configuration) {
    watch<Plain>(ofConfiguration("isLogCapturingEnabled"), plain<2>, own<Plain, 2>);
    watch<Plain>(ofConfiguration("isKeyboardDictationAllowed"), plain<3>, own<Plain, 3>);
    watch<About>(ofConfiguration("boolValueForKey:"), underKey, own<About, 2>);
  }
}

} // namespace qvdevice
