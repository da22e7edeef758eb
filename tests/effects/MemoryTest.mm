// Memory runs out at every place in turn, once and for good: nil and a line, or the very same result; and all that was
// taken is given back.
#import "Effects.h"

#include "Shortage.h"

using support::Picture;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class EffectsMemory : public Effects {
protected:
  struct Outcome {
    Picture picture;
    std::vector<std::string> lines;
    bool reached; // there was a request of that number
  };

  Outcome withoutMemory(int number, bool andAllAfter) {
    Outcome outcome;
    {
      NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
      shortage::begin(number, andAllAfter);
      UIImage *const result = blurred(picture, 10, [UIColor colorWithRed:1 green:0 blue:0 alpha:0.5], 1.8, mask);
      outcome.reached = shortage::end() > number;
      outcome.picture = support::pictureOf(result);
      outcome.lines = log();
      clearLog();
      [inner drain];
    }
    EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
    return outcome;
  }

  /// "nil", "same", "other", or nil's line, for each request that fails.
  std::vector<std::string> outcomes(bool andAllAfter) {
    const Picture expected =
        support::pictureOf(blurred(picture, 10, [UIColor colorWithRed:1 green:0 blue:0 alpha:0.5], 1.8, mask));
    clearLog();
    std::vector<std::string> words;
    for (int number = 0; number < 100; ++number) {
      const int before = shortage::outstanding();
      const std::string word = wordFor(withoutMemory(number, andAllAfter), expected);
      EXPECT_EQ(shortage::outstanding(), before) << "at request " << number;
      if (word.empty()) return words;
      words.push_back(word);
    }
    ADD_FAILURE() << "no end of requests";
    return words;
  }

  /// Empty when no request was left to fail.
  static std::string wordFor(const Outcome &outcome, const Picture &expected) {
    if (!outcome.reached) return "";
    if (outcome.picture == expected) {
      EXPECT_THAT(outcome.lines, IsEmpty());
      return "same";
    }
    if (!outcome.picture.pixels.empty()) return "other";
    EXPECT_LE(outcome.lines.size(), 1u);
    return outcome.lines.empty() ? "nil" : outcome.lines[0];
  }

  std::string line(const char *function) const {
    return std::string("*** error: ") + function + " returned error code -21771 for inputImage: " + shown(picture);
  }

  UIImage *const picture = [support::imageOf(support::noise(1200, 12, true), 1, true) retain];
  UIImage *const mask =
      [support::grayImage(1200, 12, [](size_t x, size_t) { return static_cast<std::uint8_t>(x * 3); }) retain];

  ~EffectsMemory() override {
    [picture release];
    [mask release];
  }
};

TEST_F(EffectsMemory, thatIsMissingOnceGivesNilOrTheSameResult) {
  EXPECT_THAT(outcomes(false), ElementsAre("nil", // the context
                                           line("vImageBuffer_InitWithCGImage"), line("vImageBuffer_Init"),
                                           "same",       // the temporary buffer: each pass has one of its own
                                           "nil", "nil", // the mask, as it is and where it lies
                                           "nil"));      // the result
}

TEST_F(EffectsMemory, thatIsMissingFromSomewhereOnGivesNil) {
  EXPECT_THAT(outcomes(true), ElementsAre("nil", line("vImageBuffer_InitWithCGImage"), line("vImageBuffer_Init"),
                                          line("vImageBoxConvolve_ARGB8888"), // nor do the passes find any
                                          "nil", "nil", "nil"));
}

} // namespace
