// vImage fails: a line in the platform's log, nil, and nothing is kept.
#import "Effects.h"
#import "VImageCalls.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class EffectsFailures : public Effects {
protected:
  void SetUp() override {
    Effects::SetUp();
    picture = support::imageOf(support::noise(12, 9, false));
  }

  /// The lines of an effect in which this call of vImage's fails.
  std::vector<std::string> failing(const char *function, int call, vImage_Error error) {
    VImageCalls &calls = takeNotes();
    calls.failures[{function, call}] = error;
    EXPECT_EQ(blurred(picture, 10, [UIColor redColor], 1.8, picture), nil);
    drain();
    EXPECT_EQ(calls.buffersFreed, calls.buffersMade) << function;
    EXPECT_EQ(calls.temporariesFreed, calls.temporariesSeen) << function;
    EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr) << function;
    std::vector<std::string> lines = log();
    clearLog();
    return lines;
  }

  void drain() {
    [picture retain];
    Effects::drain();
    [picture autorelease];
  }

  UIImage *picture = nil;
};

TEST_F(EffectsFailures, toLoadTheImageAreLoggedWithTheirCode) {
  EXPECT_THAT(failing("InitWithCGImage", 0, kvImageMemoryAllocationError),
              ElementsAre("*** error: vImageBuffer_InitWithCGImage returned error code -21771 for inputImage: " +
                          shown(picture)));
  EXPECT_THAT(failing("InitWithCGImage", 0, 3000000000L), // one that takes more than 32 bits
              ElementsAre("*** error: vImageBuffer_InitWithCGImage returned error code 3000000000 for inputImage: " +
                          shown(picture)));
}

TEST_F(EffectsFailures, toMakeTheSecondBufferAreLogged) {
  EXPECT_THAT(failing("Init", 0, kvImageMemoryAllocationError),
              ElementsAre("*** error: vImageBuffer_Init returned error code -21771 for inputImage: " + shown(picture)));
}

TEST_F(EffectsFailures, ofAnyPassLeaveNoHalfBlurredImage) {
  for (const int pass : {1, 2, 3}) { // the first call only asks for a size
    EXPECT_THAT(failing("BoxConvolve", pass, kvImageInternalError),
                ElementsAre("*** error: vImageBoxConvolve_ARGB8888 returned error code -21776 for inputImage: " +
                            shown(picture)));
  }
}

TEST_F(EffectsFailures, toTellTheTemporarysSizeLeaveItToThePasses) {
  UIImage *const expected = blurred(picture, 10, nil, 1);
  VImageCalls &calls = takeNotes();
  calls.failures[{"BoxConvolve", 0}] = kvImageInternalError;
  EXPECT_EQ(support::pictureOf(blurred(picture, 10, nil, 1)), support::pictureOf(expected));
  EXPECT_EQ(calls.calls.at(3), "BoxConvolve A>B 9x9 flags 8");
  EXPECT_THAT(log(), IsEmpty());
}

TEST_F(EffectsFailures, ofTheMatrixAreLogged) {
  EXPECT_THAT(failing("MatrixMultiply", 0, kvImageInvalidParameter),
              ElementsAre("*** error: vImageMatrixMultiply_ARGB8888 returned error code -21773 for inputImage: " +
                          shown(picture)));
}

TEST_F(EffectsFailures, ofBothWaysToAnImageAreLogged) {
  VImageCalls &calls = takeNotes();
  calls.failures[{"CreateCGImage", 0}] = kvImageInternalError;
  calls.failures[{"CreateCGImage", 1}] = kvImageMemoryAllocationError;
  EXPECT_EQ(blurred(picture, 10, nil, 1.8), nil);
  EXPECT_EQ(calls.buffersFreed, 2);
  EXPECT_THAT(log(), ElementsAre("*** error: vImageCreateCGImageFromBuffer returned error code -21771 for "
                                 "inputImage: " +
                                 shown(picture)));
}

} // namespace
