// Pixels times a matrix, to the last bit, and what is refused.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>

#include <Accelerate/Transform.h>

#include "Accelerate/Workers.h"
#include "Picture.h"
#include "Reference.h"
#include "Targets.h"

namespace {

using Matrix = std::array<std::int16_t, 16>;

constexpr Matrix kIdentity = {256, 0, 0, 0, 0, 256, 0, 0, 0, 0, 256, 0, 0, 0, 0, 256};

/// As frosted glass has it: colours further from grey, alpha as it is.
Matrix saturation(double s) {
  const double entries[16] = {0.0722 + 0.9278 * s,
                              0.0722 - 0.0722 * s,
                              0.0722 - 0.0722 * s,
                              0,
                              0.7152 - 0.7152 * s,
                              0.7152 + 0.2848 * s,
                              0.7152 - 0.7152 * s,
                              0,
                              0.2126 - 0.2126 * s,
                              0.2126 - 0.2126 * s,
                              0.2126 + 0.7873 * s,
                              0,
                              0,
                              0,
                              0,
                              1};
  Matrix matrix;
  for (std::size_t i = 0; i < 16; ++i) {
    matrix[i] = static_cast<std::int16_t>(std::lround(entries[i] * 256));
  }
  return matrix;
}

vImage_Error multiply(const Picture& from, const Picture& to, const Matrix& matrix, std::int32_t divisor = 256,
                      const Biases* biases = nullptr, vImage_Flags flags = 0) {
  const vImage_Buffer source = from.buffer();
  const vImage_Buffer dest = to.buffer();
  return vImageMatrixMultiply_ARGB8888(&source, &dest, matrix.data(), divisor,
                                       biases != nullptr ? biases->before.data() : nullptr,
                                       biases != nullptr ? biases->after.data() : nullptr, flags);
}

testing::AssertionResult isExact(const Matrix& matrix, std::int32_t divisor = 256, const Biases* biases = nullptr,
                                 std::size_t width = 67, std::size_t height = 5, std::size_t padding = 0) {
  const Picture source = Picture::random(width, height, 7, padding);
  const Picture empty(width, height, padding);
  const Picture result = empty;
  if (const vImage_Error error = multiply(source, result, matrix, divisor, biases); error != kvImageNoError)
    return testing::AssertionFailure() << "error " << error;
  if (result == multiplied(source, matrix, divisor, empty, biases != nullptr ? *biases : Biases{}))
    return testing::AssertionSuccess();
  return testing::AssertionFailure() << "differs";
}

TEST(MatrixMultiplyTest, theIdentityChangesNothing) {
  const Picture source = Picture::random(100, 20);
  const Picture result(100, 20);
  ASSERT_EQ(multiply(source, result, kIdentity), kvImageNoError);
  EXPECT_EQ(result, source);
}

TEST(MatrixMultiplyTest, anEntrySaysWhatOneChannelGivesToAnother) {
  Picture source(1, 1);
  for (std::size_t c = 0; c < 4; ++c) {
    source.at(0, 0, c) = static_cast<std::uint8_t>(10 * (c + 1));
  }
  for (std::size_t from = 0; from < 4; ++from) {
    for (std::size_t to = 0; to < 4; ++to) {
      Matrix matrix = {};
      matrix[4 * from + to] = 2;
      const Picture result(1, 1);
      ASSERT_EQ(multiply(source, result, matrix, 1), kvImageNoError);
      for (std::size_t c = 0; c < 4; ++c) {
        EXPECT_EQ(result.at(0, 0, c), c == to ? 20 * (from + 1) : 0) << from << " to " << to;
      }
    }
  }
}

TEST(MatrixMultiplyTest, aQuotientLosesItsFractionAndStaysWithinAByte) {
  Picture source(1, 1);
  for (std::size_t c = 0; c < 4; ++c) {
    source.at(0, 0, c) = 255;
  }
  const Matrix matrix = {255, 0, 0, 0, 0, 257, 0, 0, 0, 0, -1, 0, 0, 0, 0, 256};
  const Picture result(1, 1);
  ASSERT_EQ(multiply(source, result, matrix), kvImageNoError);
  EXPECT_EQ(result.at(0, 0, 0), 254); // 254.004
  EXPECT_EQ(result.at(0, 0, 1), 255); // 255.996
  EXPECT_EQ(result.at(0, 0, 2), 0);   // -0.996
  EXPECT_EQ(result.at(0, 0, 3), 255);
}

TEST(MatrixMultiplyTest, halfOfTheDivisorAsABiasRoundsToTheNearest) {
  Picture source(2, 1);
  for (std::size_t c = 0; c < 4; ++c) {
    source.at(0, 0, c) = 1;
    source.at(1, 0, c) = 1;
  }
  const Matrix matrix = {128, 0, 0, 0, 0, 127, 0, 0, 0, 0, 383, 0, 0, 0, 0, 384};
  const Biases biases = {.before = {}, .after = {128, 128, 128, 128}};
  const Picture result(2, 1);
  ASSERT_EQ(multiply(source, result, matrix, 256, &biases), kvImageNoError);
  EXPECT_EQ(result.at(0, 0, 0), 1);
  EXPECT_EQ(result.at(0, 0, 1), 0);
  EXPECT_EQ(result.at(1, 0, 2), 1);
  EXPECT_EQ(result.at(1, 0, 3), 2);
}

TEST(MatrixMultiplyTest, saturationIsTheReference) {
  for (const double factor : {-1.0, 0.0, 0.5, 1.0, 1.8, 3.0, -7.5, 60.0}) {
    EXPECT_TRUE(isExact(saturation(factor))) << factor;
  }
}

TEST(MatrixMultiplyTest, saturationIsTheReferenceForEveryPairOfBlueAndGreen) {
  Picture source(256, 256);
  for (std::size_t y = 0; y < 256; ++y) {
    for (std::size_t x = 0; x < 256; ++x) {
      source.at(x, y, 0) = static_cast<std::uint8_t>(x);
      source.at(x, y, 1) = static_cast<std::uint8_t>(y);
      source.at(x, y, 2) = static_cast<std::uint8_t>(x ^ y);
      source.at(x, y, 3) = static_cast<std::uint8_t>(x + y);
    }
  }
  for (const double factor : {1.8, -1.0}) {
    const Picture empty(256, 256);
    const Picture result = empty;
    ASSERT_EQ(multiply(source, result, saturation(factor)), kvImageNoError);
    EXPECT_EQ(result, multiplied(source, saturation(factor), 256, empty));
  }
}

TEST(MatrixMultiplyTest, everySizeIsTheReference) {
  for (std::size_t width = 1; width <= 70; ++width) {
    for (std::size_t height = 1; height <= 3; ++height) {
      EXPECT_TRUE(isExact(saturation(1.8), 256, nullptr, width, height));
      EXPECT_TRUE(isExact(saturation(1.8), 256, nullptr, width, height, 5));
    }
  }
  EXPECT_TRUE(isExact(saturation(1.8), 256, nullptr, 257, 129));
}

TEST(MatrixMultiplyTest, anyMatrixDivisorAndBiasesOnEveryKindOfProcessorAreTheReference) {
  std::minstd_rand next(3);
  const auto random = [&](std::int64_t most) { return static_cast<std::int64_t>(next() % (2 * most + 1)) - most; };
  ASSERT_FALSE(targets().empty());
  for (const std::int64_t target : targets()) {
    SCOPED_TRACE(name(target));
    const OnTarget here(target);
    for (int i = 0; i < 300; ++i) {
      Matrix matrix;
      const std::int64_t most = i % 3 == 0 ? 32767 : 600;
      for (std::int16_t& entry : matrix) {
        entry = static_cast<std::int16_t>(random(most));
      }
      if (i % 2 == 0) matrix[3] = matrix[7] = matrix[11] = 0, matrix[15] = 256;
      Biases biases;
      for (std::size_t c = 0; c < 4; ++c) {
        biases.before[c] = static_cast<std::int16_t>(random(i % 5 == 0 ? 300 : 0));
        biases.after[c] = static_cast<std::int32_t>(random(i % 7 == 0 ? 100000 : 0));
      }
      for (const std::int32_t divisor : {256, 1, 128, 4096, 1 << 30, 3, 1000, -256, -1}) {
        EXPECT_TRUE(isExact(matrix, divisor, &biases, 37, 2)) << i << ", divisor " << divisor;
        EXPECT_TRUE(isExact(matrix, divisor, nullptr, 37, 2)) << i << ", divisor " << divisor;
      }
    }
  }
}

TEST(MatrixMultiplyTest, theLeastEntriesAndTheGreatestAreTheReference) {
  Matrix least;
  least.fill(-32768);
  Matrix greatest;
  greatest.fill(32767);
  for (const std::int32_t divisor : {256, 1, 255, -255, -2147483647 - 1, 2147483647}) {
    EXPECT_TRUE(isExact(least, divisor));
    EXPECT_TRUE(isExact(greatest, divisor));
  }
  // The sums of one column are as large as words of quotients still allow, and one greater.
  for (const std::int16_t entry : {std::int16_t{32767}, std::int16_t{-32768}}) {
    EXPECT_TRUE(isExact({entry, 0, 0, 0, 0, entry, 0, 0, 0, 0, entry, 0, 0, 0, 0, 256}));
    EXPECT_TRUE(isExact({entry, 1, 1, 0, 1, entry, 1, 0, 1, 1, entry, 0, 0, 0, 0, 256}));
  }
}

TEST(MatrixMultiplyTest, aSumThatNeedsMoreThan32BitsWrapsAround) {
  Picture source(1, 1);
  for (std::size_t c = 0; c < 4; ++c) {
    source.at(0, 0, c) = 1;
  }
  const Biases biases = {.before = {}, .after = {2147483647, 2147483647, 2147483647, 2147483647}};
  for (const std::int32_t divisor : {256, 255}) {
    const Picture result(1, 1);
    ASSERT_EQ(multiply(source, result, kIdentity, divisor, &biases), kvImageNoError);
    EXPECT_EQ(result.at(0, 0, 0), 0);
  }
}

TEST(MatrixMultiplyTest, inPlaceIsTheSame) {
  const Picture source = Picture::random(75, 31, 5, 12);
  const Picture there = source;
  ASSERT_EQ(multiply(there, there, saturation(1.8)), kvImageNoError);
  EXPECT_EQ(there, multiplied(source, saturation(1.8), 256, source));
}

TEST(MatrixMultiplyTest, threadsGiveTheSameAsOne) {
  const Picture source = Picture::random(301, 777);
  const Picture alone(301, 777);
  ASSERT_EQ(multiply(source, alone, saturation(1.8), 256, nullptr, kvImageDoNotTile), kvImageNoError);
  for (const std::size_t threads : {1U, 2U, 3U, 7U}) {
    qvdevice::setWorkerCount(threads);
    const Picture shared(301, 777);
    ASSERT_EQ(multiply(source, shared, saturation(1.8)), kvImageNoError);
    EXPECT_EQ(shared, alone);
  }
}

TEST(MatrixMultiplyTest, noPixelsAreNoError) {
  std::uint8_t pixel[4];
  const vImage_Buffer none = {.data = pixel, .height = 3, .width = 0, .rowBytes = 4};
  EXPECT_EQ(vImageMatrixMultiply_ARGB8888(&none, &none, kIdentity.data(), 256, nullptr, nullptr, 0), 0);
}

class MatrixMultiplyErrorsTest : public testing::Test {
protected:
  vImage_Error multiply(std::int32_t divisor = 256, vImage_Flags flags = 0) {
    return vImageMatrixMultiply_ARGB8888(&source, &dest, kIdentity.data(), divisor, nullptr, nullptr, flags);
  }

  void TearDown() override { EXPECT_EQ(written, Picture(8, 6)); }

  const Picture pixels = Picture::random(8, 6);
  const Picture written = Picture(8, 6);
  vImage_Buffer source = pixels.buffer();
  vImage_Buffer dest = written.buffer();
};

TEST_F(MatrixMultiplyErrorsTest, noBuffersNoDataNoMatrix) {
  EXPECT_EQ(vImageMatrixMultiply_ARGB8888(nullptr, &dest, kIdentity.data(), 256, nullptr, nullptr, 0), -21772);
  EXPECT_EQ(vImageMatrixMultiply_ARGB8888(&source, nullptr, kIdentity.data(), 256, nullptr, nullptr, 0), -21772);
  EXPECT_EQ(vImageMatrixMultiply_ARGB8888(&source, &dest, nullptr, 256, nullptr, nullptr, 0), -21772);
  source.data = nullptr;
  EXPECT_EQ(multiply(), -21772);
  source = pixels.buffer();
  dest.data = nullptr;
  EXPECT_EQ(multiply(), -21772);
}

TEST_F(MatrixMultiplyErrorsTest, flagsThatMeanNothingHere) {
  for (vImage_Flags flag = 1; flag != 0; flag <<= 1) {
    if (flag != 16) {
      EXPECT_EQ(multiply(256, flag), -21775) << flag;
    }
  }
}

TEST_F(MatrixMultiplyErrorsTest, aDivisorOfZero) { EXPECT_EQ(multiply(0), -21773); }

TEST_F(MatrixMultiplyErrorsTest, buffersOfOtherSizes) {
  source.width = 7;
  EXPECT_EQ(multiply(), -21774);
  source = pixels.buffer();
  source.height = 5;
  EXPECT_EQ(multiply(), -21774);
  source = pixels.buffer();
  dest.height = 5;
  EXPECT_EQ(multiply(), -21774);
}

TEST_F(MatrixMultiplyErrorsTest, rowsShorterThanTheirPixels) {
  source.rowBytes = 31;
  EXPECT_EQ(multiply(), -21777);
  source = pixels.buffer();
  dest.rowBytes = 0;
  EXPECT_EQ(multiply(), -21777);
}

TEST_F(MatrixMultiplyErrorsTest, buffersThatOverlapInPart) {
  source = written.part(0, 0, 8, 5);
  dest = written.part(0, 1, 8, 5);
  EXPECT_EQ(multiply(), -21780);
  source = written.part(0, 0, 4, 3);
  dest = source;
  dest.rowBytes = 16;
  EXPECT_EQ(multiply(), -21780);
}

} // namespace
