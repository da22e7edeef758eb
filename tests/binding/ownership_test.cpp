#include "Probe.hpp"

#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

using namespace qvsb;

namespace {

/// How many probes live now, less those alive when the test began.
class Live {
public:
  int count() const { return QVProbe::live() - before_; }

private:
  int before_ = QVProbe::live();
};

NSUInteger retainCount(Object object) { return send<NSUInteger>(object, "retainCount"_sel); }

} // namespace

TEST(Strong, KeepsItsObjectAliveAndReleasesItAtTheEnd) {
  const Live live;
  {
    Strong<QVProbe> first = QVProbe::make();
    EXPECT_EQ(live.count(), 1);
    const Strong<QVProbe> second = first;
    first = nullptr;
    EXPECT_EQ(live.count(), 1);
  }
  EXPECT_EQ(live.count(), 0);
}

TEST(Strong, AssignedToItselfKeepsTheObject) {
  const Live live;
  Strong<QVProbe> probe = QVProbe::make();
  const Strong<QVProbe>& same = probe;
  probe = same;
  probe = probe.get();
  EXPECT_EQ(live.count(), 1);
  EXPECT_EQ(retainCount(probe.get()), 1U);
}

TEST(Strong, RetainsTheNewValueBeforeItReleasesTheOldOne) {
  // As a list whose head owns the next: `head = head->next` must not free the next with the head.
  const Live live;
  Strong<NSObject> holder = NSObject::from(QVProbe::make().get());
  EXPECT_EQ(live.count(), 1);
  {
    const AutoreleasePool pool;
    const auto array = [](Object content) {
      return Strong<NSObject>::adopt(NSObject::from(send<Object>(
          send<Object>(Class(objc_lookUpClass("NSArray")), "arrayWithObject:"_sel, content), "retain"_sel)));
    };
    holder = array(QVProbe::make().get());
  }
  holder = NSObject::from(send<Object>(holder.get(), "lastObject"_sel));
  EXPECT_EQ(live.count(), 1);
  EXPECT_EQ(QVProbe::from(holder.get()).number(), 0);
}

TEST(Strong, MovedFromIsNilAndNothingIsRetainedTwice) {
  Strong<QVProbe> from = QVProbe::make();
  const Strong<QVProbe> to = std::move(from);
  EXPECT_FALSE(from); // NOLINT(bugprone-use-after-move): that it is nil is the promise
  EXPECT_EQ(retainCount(to.get()), 1U);
}

TEST(Strong, AutoreleasedLivesUntilThePoolEnds) {
  const Live live;
  {
    const AutoreleasePool pool;
    const QVProbe probe = QVProbe::make().autorelease();
    EXPECT_EQ(live.count(), 1);
    EXPECT_EQ(probe.number(), 0);
  }
  EXPECT_EQ(live.count(), 0);
}

TEST(Strong, DetachedIsTheCallersToRelease) {
  const Live live;
  const QVProbe probe = QVProbe::make().detach();
  EXPECT_EQ(live.count(), 1);
  send<void>(probe, "release"_sel);
  EXPECT_EQ(live.count(), 0);
}

TEST(Strong, OfNilDoesNothing) {
  Strong<QVProbe> none;
  const Strong<QVProbe> copy = none;
  EXPECT_FALSE(copy);
  EXPECT_FALSE(none.autorelease());
}

TEST(Copied, OwnsACopyThatLaterChangesDoNotReach) {
  const Live live;
  {
    const Strong<QVProbe> original = QVProbe::make();
    original->setNumber(1);
    const Copied<QVProbe> copy(original.get());
    original->setNumber(2);
    EXPECT_EQ(copy->number(), 1001);
    EXPECT_EQ(live.count(), 2);
  }
  EXPECT_EQ(live.count(), 0);
}

TEST(Weak, ReadsItsObjectWithoutKeepingItAlive) {
  const Live live;
  Strong<QVProbe> probe = QVProbe::make();
  const Weak<QVProbe> weak(probe.get());
  {
    const AutoreleasePool pool;
    EXPECT_EQ(weak.get(), probe.get());
  }
  EXPECT_EQ(weak.lock().get(), probe.get());
  EXPECT_EQ(retainCount(probe.get()), 1U);
  probe = nullptr;
  EXPECT_EQ(live.count(), 0);
  EXPECT_FALSE(weak.get());
  EXPECT_FALSE(weak.lock());
}

TEST(Weak, LockedKeepsTheObjectForAsLongAsTheLock) {
  Strong<QVProbe> probe = QVProbe::make();
  const Weak<QVProbe> weak(probe.get());
  {
    const Strong<QVProbe> locked = weak.lock();
    probe = nullptr;
    EXPECT_EQ(locked->number(), 0);
    EXPECT_TRUE(weak.lock());
  }
  EXPECT_FALSE(weak.lock());
}

TEST(Weak, CanBeReassignedCopiedAndClearedAndSeveralSeeTheDeath) {
  Strong<QVProbe> first = QVProbe::make();
  const Strong<QVProbe> second = QVProbe::make();
  Weak<QVProbe> weak(first.get());
  const Weak<QVProbe> other = weak;
  weak = second.get();
  first = nullptr;
  EXPECT_FALSE(other.lock());
  EXPECT_EQ(weak.lock().get(), second.get());
  weak = QVProbe();
  EXPECT_FALSE(weak.lock());
  EXPECT_EQ(retainCount(second.get()), 1U);
}

TEST(Weak, ReadWhileTheObjectDiesOnAnotherThreadGivesALiveObjectOrNil) {
  const Live live;
  constexpr int kRounds = 2000;
  std::atomic<int> seen{0};
  for (int round = 0; round < kRounds; ++round) {
    Strong<QVProbe> probe = QVProbe::make();
    probe->setNumber(round);
    const Weak<QVProbe> weak(probe.get());
    std::atomic<bool> go{false};
    std::thread reader([&] {
      const AutoreleasePool pool;
      while (!go) {
      }
      while (const Strong<QVProbe> locked = weak.lock()) {
        ASSERT_EQ(locked->number(), round);
        ++seen;
      }
    });
    go = true;
    probe = nullptr;
    reader.join();
    ASSERT_FALSE(weak.lock());
  }
  EXPECT_EQ(live.count(), 0);
  RecordProperty("readsThatFoundIt", seen.load());
}

TEST(AutoreleasePool, NestsAndReleasesOnlyItsOwn) {
  const Live live;
  const AutoreleasePool outer;
  QVProbe::make().autorelease();
  {
    const AutoreleasePool inner;
    QVProbe::make().autorelease();
    EXPECT_EQ(live.count(), 2);
  }
  EXPECT_EQ(live.count(), 1);
}

TEST(Synchronized, IsRecursiveAndExcludesOtherThreads) {
  const Strong<QVProbe> probe = QVProbe::make();
  int counter = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 5000; ++i) {
        const Synchronized once(probe.get());
        const Synchronized twice(probe.get());
        ++counter;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(counter, 20000);
}
