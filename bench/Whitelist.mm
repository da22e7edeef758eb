// What the open-in whitelist costs: a question that none of a thousand patterns answers, against a plain C loop over
// the same texts, for lists of several makes.
#import <Foundation/Foundation.h>

#include <cstring>
#include <string>
#include <vector>

#include "SideBySide.hpp"
#include "support/Allocations.h"

@interface NSObject (QVBenchPolicy)
+ (id)instance;
- (void)setZorbel:(id)zorbel;
- (BOOL)allowsOpenInWithAppId:(NSString *)appId;
- (NSArray *)mergeExcludedActivityTypes:(NSArray *)types;
@end

/// An SDK that has a whitelist and nothing else to say.
@interface QVBenchSDK : NSObject {
@public
  NSArray *whitelist;
}
@end
@implementation QVBenchSDK
- (void)dealloc {
  [whitelist release];
  [super dealloc];
}
- (BOOL)isReady {
  return YES;
}
- (NSInteger)openInPolicy {
  return 2;
}
- (NSInteger)pasteboardPolicy {
  return 0;
}
- (NSInteger)printPolicy {
  return 0;
}
- (NSArray *)openInWhitelist {
  return whitelist;
}
@end

namespace {

constexpr std::size_t patternCount = 1000;
constexpr std::size_t questionsInATurn = 20;
const std::string identifier = "com.example.department.mail.viewer";

using Make = std::string (*)(std::size_t index);

char letter(std::size_t index, char otherThan) {
  const char first = static_cast<char>('a' + index % 25);
  return first < otherThan ? first : static_cast<char>(first + 1);
}

/// The identifier with the character at that place replaced.
std::string withOtherCharacterAt(std::size_t at, std::size_t index) {
  std::string text = identifier;
  text[at] = letter(index, text[at]);
  return text;
}

std::string unrelated(std::size_t index) {
  return std::string(1, letter(index, 'c')) + "rg.vendor" + std::to_string(index) + ".product";
}

std::string samePrefix(std::size_t index) { return "com.example.department.app" + std::to_string(index); }

std::string sameLengthAndEnd(std::size_t index) {
  std::string text = identifier;
  for (std::size_t at = 0; at + 6 < text.size(); ++at)
    text[at] = letter(index * 7 + at * 3, text[at]);
  return text;
}

std::string allButTheMiddle(std::size_t index) { return withOtherCharacterAt(identifier.size() / 2, index); }

std::string allButOneAnywhere(std::size_t index) {
  return withOtherCharacterAt((index * 7919) % identifier.size(), index);
}

std::string otherAlphabet(std::size_t index) { return "com.example.отдел.почта" + std::to_string(index); }

/// A list in both forms.
struct List {
  explicit List(Make make) : foundation([[NSMutableArray alloc] init]) {
    for (std::size_t i = 0; i < patternCount; ++i) {
      const std::string text = make(i);
      c.push_back(strdup(text.c_str()));
      [foundation addObject:[NSString stringWithUTF8String:text.c_str()]];
    }
  }
  ~List() {
    for (char *text : c)
      free(text);
    [foundation release];
  }
  List(const List &) = delete;
  List &operator=(const List &) = delete;

  NSMutableArray *foundation;
  std::vector<char *> c;
};

[[gnu::noinline]] bool plainLoop(const char *appId, char *const *patterns, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i)
    if (std::strncmp(appId, patterns[i], std::strlen(patterns[i])) == 0) return true;
  return false;
}

void Whitelist(benchmark::State &state, Make make) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  const List list(make);
  NSString *const appId = [NSString stringWithUTF8String:identifier.c_str()];
  QVBenchSDK *const sdk = [[[QVBenchSDK alloc] init] autorelease];
  sdk->whitelist = [[NSArray alloc] initWithArray:list.foundation];
  id const util = [NSClassFromString(@"ZorbelUtil") instance];
  [util setZorbel:sdk];

  const auto ask = [=] {
    NSAutoreleasePool *const ofTheTurn = [[NSAutoreleasePool alloc] init];
    const double taken = bench::nanosecondsEach(questionsInATurn, [&] {
      for (std::size_t i = 0; i < questionsInATurn; ++i)
        benchmark::DoNotOptimize([util allowsOpenInWithAppId:appId]);
    });
    [ofTheTurn drain];
    return taken;
  };
  const auto merge = [=] {
    NSAutoreleasePool *const ofTheTurn = [[NSAutoreleasePool alloc] init];
    const double taken =
        bench::nanosecondsEach(1, [&] { benchmark::DoNotOptimize([util mergeExcludedActivityTypes:nil]); });
    [ofTheTurn drain];
    return taken;
  };
  const auto loop = [&] {
    return bench::nanosecondsEach(questionsInATurn, [&] {
      for (std::size_t i = 0; i < questionsInATurn; ++i)
        benchmark::DoNotOptimize(plainLoop(identifier.c_str(), list.c.data(), list.c.size()));
    });
  };

  // The lists are made so that none matches, and that one would be found.
  sdk->whitelist = [[[sdk->whitelist autorelease] arrayByAddingObject:appId] retain];
  const bool found = [util allowsOpenInWithAppId:appId];
  sdk->whitelist = [[[sdk->whitelist autorelease] subarrayWithRange:NSMakeRange(0, patternCount)] retain];
  if (!found || [util allowsOpenInWithAppId:appId] || plainLoop(identifier.c_str(), list.c.data(), list.c.size())) {
    state.SkipWithError("a list does not give the answer that it is made for");
  } else {
    const bench::Variant variants[] = {{"asked", ask}, {"plainC", loop}, {"merged", merge}};
    bench::sideBySide(state, variants);
    state.counters["allocations"] =
        static_cast<double>(allocationsIn([&] { benchmark::DoNotOptimize([util allowsOpenInWithAppId:appId]); }));
  }
  [util setZorbel:nil];
  [pool drain];
}

} // namespace

BENCHMARK_CAPTURE(Whitelist, unrelated, unrelated)->Iterations(50)->Repetitions(11);
BENCHMARK_CAPTURE(Whitelist, samePrefix, samePrefix)->Iterations(50)->Repetitions(11);
BENCHMARK_CAPTURE(Whitelist, sameLengthAndEnd, sameLengthAndEnd)->Iterations(50)->Repetitions(11);
BENCHMARK_CAPTURE(Whitelist, allButTheMiddle, allButTheMiddle)->Iterations(50)->Repetitions(11);
BENCHMARK_CAPTURE(Whitelist, allButOneAnywhere, allButOneAnywhere)->Iterations(50)->Repetitions(11);
BENCHMARK_CAPTURE(Whitelist, otherAlphabet, otherAlphabet)->Iterations(50)->Repetitions(11);

BENCHMARK_MAIN();
