// Compressed streams: unpacked, begun anew, and given back as they were.
#include "Deflate.h"

#include <random>
#include <set>

#include <gtest/gtest.h>

#include "Archives.h"
#include "UndoRecord.h"

using namespace inputs;
using qvwrap::Head;
using qvwrap::Redeflated;
using qvwrap::UndoRecord;

namespace {

/// Letters without a pattern, which take zlib many blocks.
Bytes letters(std::size_t size, unsigned seed) {
  std::mt19937 random(seed);
  Bytes content(size);
  for (std::uint8_t& byte : content) {
    byte = static_cast<std::uint8_t>('a' + random() % 20);
  }
  return content;
}

/// Begins a stream anew for content that is changed at `at`; looks at what came of it, and answers it.
Redeflated redeflate(const Bytes& content, std::size_t at, int level) {
  const Bytes stream = zlibStream(content, level);
  Bytes fresh = content;
  fresh[at] ^= 0x55;
  Redeflated made = qvwrap::redeflated(stream, content, fresh);
  EXPECT_EQ(qvwrap::inflated(made.stream, fresh.size()), fresh);
  EXPECT_EQ(qvwrap::restored(made.stream, made.head), stream);
  return made;
}

} // namespace

TEST(DeflateTest, AStreamIsWholeOrNothing) {
  const Bytes content = executable("host");
  const Bytes stream = qvwrap::deflated(content);
  EXPECT_EQ(qvwrap::inflated(stream, content.size()), content);
  EXPECT_EQ(qvwrap::inflated(stream, content.size() - 1), std::nullopt);
  EXPECT_EQ(qvwrap::inflated(stream, content.size() + 1), std::nullopt);
  EXPECT_EQ(qvwrap::inflated(View(stream).first(stream.size() - 1), content.size()), std::nullopt);
  Bytes more = stream;
  more.push_back(0);
  EXPECT_EQ(qvwrap::inflated(more, content.size()), std::nullopt);
  EXPECT_EQ(qvwrap::inflated(qvwrap::deflated({}), 0), Bytes());
}

TEST(DeflateTest, ContentLargerThanOnePieceIsCompressedWhole) {
  const Bytes content = letters(1500000, 1);
  EXPECT_EQ(qvwrap::inflated(qvwrap::deflated(content), content.size()), content);
}

TEST(DeflateTest, AStreamBegunAnewSharesItsRestAtEveryBitOfAByte) {
  std::set<unsigned> phases;
  for (unsigned seed = 0; seed < 64; ++seed) {
    const Redeflated made = redeflate(letters(120000, seed), 1000, 6);
    ASSERT_LT(made.head.tail, made.stream.size()) << seed;
    phases.insert(static_cast<unsigned>(made.head.bits % 8));
  }
  EXPECT_EQ(phases, (std::set<unsigned>{0, 1, 2, 3, 4, 5, 6, 7}));
}

TEST(DeflateTest, OnlyTheBeginningOfALargeStreamIsKept) {
  for (const int level : {1, 6, 9}) {
    const Redeflated made = redeflate(letters(2000000, 7), 4000, level);
    EXPECT_LT(made.head.bytes.size(), 100000U) << level;
    EXPECT_GT(made.head.bytes.size(), 20000U) << level; // a window of 32 KiB, packed
  }
}

TEST(DeflateTest, WhatIsPackedInOneBlockIsKeptWhole) {
  const Bytes content = executable("host");
  const Redeflated made = redeflate(content, 20, 6);
  EXPECT_EQ(made.head.bytes, zlibStream(content, 6));
  EXPECT_EQ(made.head.tail, made.stream.size());
}

TEST(DeflateTest, AChangeTowardsTheEndKeepsTheStreamWhole) {
  const Bytes content = letters(120000, 3);
  const Redeflated made = redeflate(content, 119000, 6);
  EXPECT_EQ(made.head.bytes, zlibStream(content, 6));
}

TEST(DeflateTest, AHeadThatDoesNotBelongToAStreamGivesNothing) {
  const Bytes stream = {1, 2, 3};
  EXPECT_EQ(qvwrap::restored(stream, {8, 1, {9}}), (Bytes{9, 2, 3}));
  EXPECT_EQ(qvwrap::restored(stream, {12, 1, {9, 1}}), (Bytes{9, 1, 3}));
  EXPECT_EQ(qvwrap::restored(stream, {8, 4, {9}}), std::nullopt);
  EXPECT_EQ(qvwrap::restored(stream, {12, 3, {9, 1}}), std::nullopt);
  EXPECT_EQ(qvwrap::restored(stream, {12, 1, {9, 0x11}}), std::nullopt);
  EXPECT_EQ(qvwrap::restored(stream, {16, 1, {9}}), std::nullopt);
  EXPECT_EQ(qvwrap::restored(stream, {0xffffffffffffffff, 0, {}}), std::nullopt);
}

TEST(UndoRecordTest, ARecordIsReadAsItWasWritten) {
  const UndoRecord record{123456789012, 0xdeadbeef, {27, 99, {1, 2, '\n', 4}}};
  const auto read = UndoRecord::from(record.bytes());
  ASSERT_TRUE(read);
  EXPECT_EQ(read->size, 123456789012U);
  EXPECT_EQ(read->checksum, 0xdeadbeefU);
  EXPECT_EQ(read->head, (Head{27, 99, {1, 2, '\n', 4}}));
}

TEST(UndoRecordTest, AnythingElseIsNoRecord) {
  EXPECT_TRUE(UndoRecord::from(qvwrap::viewOf("qvwrap1 10 0000000a 9 8\n")));
  for (const char* text : {"", "qvwrap1 10 0000000a 9 8", "qvwrap2 10 0000000a 9 8\n", "qvwrap1 10 a 9 8\n",
                           "qvwrap1 10 0000000a 9\n", "qvwrap1 -1 0000000a 9 8\n", "qvwrap1 10 0000000a 9  8\n"}) {
    EXPECT_FALSE(UndoRecord::from(qvwrap::viewOf(text))) << text;
  }
}
