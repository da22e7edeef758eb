// The way of the pixels through vImage, call by call, and that all memory is given back once.
#import "Effects.h"
#import "VImageCalls.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

extern "C" void cleanupBuffer(void *userData, void *bufferData);

namespace {

class EffectsBuffers : public Effects {
protected:
  static UIImage *picture() { return support::imageOf(support::noise(12, 9, false)); }
};

TEST_F(EffectsBuffers, goThroughThreePassesWithOneTemporaryAndThenThroughTheMatrix) {
  VImageCalls &calls = takeNotes();
  UIImage *const result = blurred(picture(), 10, nil, 1.8);
  EXPECT_NE(result, nil);
  EXPECT_THAT(calls.calls, ElementsAre("InitWithCGImage 8/32 8194 flags 256 -> A", "Init 12x9 32 flags 0 -> B",
                                       "BoxConvolve A>B 9x9 flags 136", "BoxConvolve A>B+ 9x9 flags 8",
                                       "BoxConvolve B>A+ 9x9 flags 8", "BoxConvolve A>B+ 9x9 flags 8",
                                       "MatrixMultiply B>A /256 flags 0", "CreateCGImage A 8194 callback flags 512"));
  EXPECT_EQ(calls.buffersMade, 2);
  EXPECT_EQ(calls.temporariesSeen, 1);
  EXPECT_EQ(calls.temporariesFreed, 1);
  drain();
  EXPECT_EQ(calls.buffersFreed, 2);
  EXPECT_THAT(log(), IsEmpty());
}

TEST_F(EffectsBuffers, goThroughTheBoxesAloneWhenTheColoursStay) {
  VImageCalls &calls = takeNotes();
  EXPECT_NE(blurred(picture(), 10, nil, 1), nil);
  ASSERT_EQ(calls.calls.size(), 7u);
  EXPECT_EQ(calls.calls.back(), "CreateCGImage B 8194 callback flags 512");
  EXPECT_THAT(calls.matrix, IsEmpty());
  drain();
  EXPECT_EQ(calls.buffersFreed, 2);
}

TEST_F(EffectsBuffers, goThroughTheMatrixAloneWithoutARadius) {
  VImageCalls &calls = takeNotes();
  EXPECT_NE(blurred(picture(), 0, nil, 0.5), nil);
  EXPECT_THAT(calls.calls, ElementsAre("InitWithCGImage 8/32 8194 flags 256 -> A", "Init 12x9 32 flags 0 -> B",
                                       "MatrixMultiply A>B /256 flags 0", "CreateCGImage B 8194 callback flags 512"));
  EXPECT_EQ(calls.temporariesSeen, 0);
  drain();
  EXPECT_EQ(calls.buffersFreed, 2);
}

TEST_F(EffectsBuffers, areNotMadeWhenNothingIsToBeDone) {
  VImageCalls &calls = takeNotes();
  EXPECT_NE(blurred(picture(), 0, [UIColor redColor], 1, picture()), nil);
  EXPECT_THAT(calls.calls, IsEmpty());
}

TEST_F(EffectsBuffers, haveTheSizeOfTheBitmapAndNotOfTheImage) {
  VImageCalls &calls = takeNotes();
  EXPECT_NE(blurred(support::imageOf(support::noise(12, 9, true), 3, true), 1, nil, 1), nil);
  EXPECT_EQ(calls.calls.at(1), "Init 12x9 32 flags 0 -> B");
}

TEST_F(EffectsBuffers, areGivenToTheEffectImageWithoutACopyAndFreedWithIt) {
  VImageCalls &calls = takeNotes();
  {
    NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
    UIImage *const result = [blurred(picture(), 0, nil, 0.5) retain];
    [inner drain];
    EXPECT_THAT(calls.calls, Contains(StartsWith("CreateCGImage")).Times(1)); // a copy would be a second one
    EXPECT_EQ(calls.calls.back(), "CreateCGImage B 8194 callback flags 512");
    // The result has been drawn; nobody needs the effect image any longer.
    EXPECT_EQ(calls.buffersFreed, 2);
    [result release];
  }
}

TEST_F(EffectsBuffers, areCopiedAndFreedAtOnceWhenTheImageCannotHaveThem) {
  UIImage *const expected = blurred(picture(), 10, nil, 1.8);
  VImageCalls &calls = takeNotes();
  calls.failures[{"CreateCGImage", 0}] = kvImageMemoryAllocationError;
  UIImage *const result = blurred(picture(), 10, nil, 1.8);
  EXPECT_EQ(support::pictureOf(result), support::pictureOf(expected));
  ASSERT_GE(calls.calls.size(), 2u);
  EXPECT_EQ(calls.calls[calls.calls.size() - 2], "CreateCGImage A 8194 callback flags 512");
  EXPECT_EQ(calls.calls.back(), "CreateCGImage A 8194 flags 0");
  EXPECT_EQ(calls.buffersFreed, 2); // at once: nothing has been drained
  EXPECT_THAT(log(), IsEmpty());
}

TEST_F(EffectsBuffers, areFreedByTheCallbackThatTheLibraryExports) {
  VImageCalls &calls = takeNotes();
  vImage_Buffer buffer{};
  ASSERT_EQ(vImageBuffer_Init(&buffer, 1, 1, 32, kvImageNoFlags), kvImageNoError);
  cleanupBuffer(reinterpret_cast<void *>(0x10), buffer.data);
  EXPECT_EQ(calls.buffersFreed, 1);
  cleanupBuffer(nullptr, nullptr);
}

} // namespace
