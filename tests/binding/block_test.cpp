#include "Probe.hpp"

#include <memory>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

using namespace qvsb;

namespace {

/// Counts its copies in use.
struct Capture {
  explicit Capture(int& live) : live_(&live) { ++*live_; }
  Capture(const Capture& other) : live_(other.live_), text(other.text) { ++*live_; }
  Capture& operator=(const Capture&) = delete;
  ~Capture() { --*live_; }
  int* live_;
  std::string text = "a text that is too long for the small string buffer";
};

} // namespace

TEST(Block, MadeFromALambdaIsCalledByObjectiveC) {
  const Strong<QVProbe> probe = QVProbe::make();
  NSInteger got = 0;
  auto block = makeBlock<void(NSInteger)>([&got](NSInteger value) { got = value; });
  probe->keep(block.get());
  probe->callKept(42);
  EXPECT_EQ(got, 42);
}

TEST(Block, OutlivesItsMakerWithItsCapturesAndDestroysThemWithTheLastCopy) {
  int live = 0;
  const Strong<QVProbe> probe = QVProbe::make();
  std::string got;
  {
    const Capture capture(live);
    auto block =
        makeBlock<void(NSInteger)>([capture, &got](NSInteger value) { got = capture.text + std::to_string(value); });
    EXPECT_EQ(live, 2);
    probe->keep(block.get());
    EXPECT_EQ(live, 3);
  }
  EXPECT_EQ(live, 1);
  probe->callKept(7);
  EXPECT_EQ(got, "a text that is too long for the small string buffer7");
  probe->forget();
  EXPECT_EQ(live, 0);
}

TEST(Block, CapturesOfObjectsAreRetainedByTheCopy) {
  const int before = QVProbe::live();
  const Strong<QVProbe> keeper = QVProbe::make();
  {
    auto block = makeBlock<void(NSInteger)>([held = QVProbe::make()](NSInteger value) { held->setNumber(value); });
    keeper->keep(block.get());
  }
  EXPECT_EQ(QVProbe::live(), before + 2);
  keeper->callKept(1);
  keeper->forget();
  EXPECT_EQ(QVProbe::live(), before + 1);
}

TEST(Block, HoldsAMutableLambdasState) {
  auto counter = makeBlock<NSInteger()>([count = NSInteger{0}]() mutable { return ++count; });
  EXPECT_EQ(counter.get()(), 1);
  EXPECT_EQ(counter.get()(), 2);
  const Copied<Block<NSInteger()>> copy(counter.get());
  EXPECT_EQ(copy.get()(), 3);
  EXPECT_EQ(counter.get()(), 3); // the copy's state is its own
}

TEST(Block, MadeByObjectiveCIsCalledLikeAFunction) {
  const AutoreleasePool pool;
  const Strong<QVProbe> probe = QVProbe::make();
  probe->setNumber(100);
  const auto adder = send<Block<NSInteger(NSInteger, NSInteger)>>(probe.get(), "adder"_sel);
  EXPECT_EQ(adder(20, 3), 123);
}

TEST(Block, PassesAndReturnsStructures) {
  const AutoreleasePool pool;
  const auto mover = send<Block<CGRect(CGRect)>>(QVProbe::make().get(), "mover"_sel);
  const CGRect moved = mover(CGRect{{1, 2}, {3, 4}});
  EXPECT_EQ(moved.origin.x, 2);
  EXPECT_EQ(moved.size.height, 4);
}

TEST(Block, MadeFromALambdaTakesAndReturnsStructuresForObjectiveC) {
  auto block = makeBlock<CGRect(CGRect, BOOL)>([](CGRect rect, BOOL wider) {
    rect.size.width += wider ? 10 : 0;
    return rect;
  });
  const auto answer = send<CGRect>(QVProbe::make().get(), "ask:with:"_sel, block.get(), CGRect{{1, 2}, {3, 4}});
  EXPECT_EQ(answer.origin.y, 2);
  EXPECT_EQ(answer.size.width, 13);
}

TEST(Block, KeptByCopiedOutlivesThePoolThatHeldIt) {
  Copied<Block<NSInteger(NSInteger, NSInteger)>> kept;
  {
    const AutoreleasePool pool;
    kept = send<Block<NSInteger(NSInteger, NSInteger)>>(QVProbe::make().get(), "adder"_sel);
  }
  EXPECT_EQ(kept.get()(1, 2), 3);
}

TEST(Block, CarriesTheCompilersSignature) {
  const AutoreleasePool pool;
  const Strong<QVProbe> probe = QVProbe::make();
  auto ours = makeBlock<NSInteger(NSInteger, NSInteger)>([](NSInteger a, NSInteger b) { return a + b; });
  const auto theirs = send<Block<NSInteger(NSInteger, NSInteger)>>(probe.get(), "adder"_sel);
  EXPECT_STREQ(send<const char*>(probe.get(), "signatureOf:"_sel, Object(ours.get())), "q24@?0q8q16");
  EXPECT_STREQ(send<const char*>(probe.get(), "signatureOf:"_sel, Object(theirs)), "q24@?0q8q16");
}

TEST(Block, OfNilIsFalseAndCopyingItGivesNil) {
  const Block<void(BOOL)> none;
  EXPECT_FALSE(none);
  const Copied<Block<void(BOOL)>> copy(none);
  EXPECT_FALSE(copy);
}

TEST(Block, CallingNilEndsTheProcessAsInObjectiveC) {
  const pid_t child = fork();
  if (child == 0) {
    close(STDERR_FILENO); // a sanitizer's report of the intended crash helps nobody
    const Block<void(BOOL)> none;
    none(YES);
    _exit(0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_FALSE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}
