// Weak references: nil when the object is gone, and never an object on its way out, whoever lets go of it meanwhile.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <objc/objc-arc.h>

#import <Foundation/Foundation.h>

#include <atomic>
#include <csignal>
#include <thread>
#include <vector>

#include "Child.h"
#include "Pool.h"

namespace {

constexpr long kAlive = 0x0a11fe;
std::atomic<long> deallocated{0};

} // namespace

@interface WeakSample : NSObject {
@public
  long mark_;
  id *seen_;
}
@end

@implementation WeakSample

- (id)init {
  self = [super init];
  if (self != nil) mark_ = kAlive;
  return self;
}

- (void)dealloc {
  mark_ = 0;
  if (seen_ != nullptr) *seen_ = objc_loadWeakRetained(seen_ + 1);
  ++deallocated;
  [super dealloc];
}

@end

/// Counts by itself, as some of the platform's own classes do.
@interface SelfCounting : NSObject {
  std::atomic<int> *count_;
}
@end

@implementation SelfCounting

- (id)init {
  self = [super init];
  if (self != nil) count_ = new std::atomic<int>(1);
  return self;
}

- (id)retain {
  ++*count_;
  return self;
}

- (oneway void)release {
  if (--*count_ == 0) [self dealloc];
}

- (void)dealloc {
  delete count_;
  [super dealloc];
}

@end

/// Makes a new weak reference to something else while it goes.
@interface WeakInDealloc : NSObject {
@public
  id other_;
  id weak_;
}
@end

@implementation WeakInDealloc

- (void)dealloc {
  objc_storeWeak(&weak_, other_);
  objc_destroyWeak(&weak_);
  [super dealloc];
}

@end

namespace {

class WeakReference : public PoolTest {
protected:
  id loaded(id *place) { return [objc_loadWeakRetained(place) autorelease]; }
};

TEST_F(WeakReference, InitialisedWithAnObjectLoadsIt) {
  id place;
  WeakSample *const object = [[WeakSample alloc] init];
  EXPECT_EQ(objc_initWeak(&place, object), object);
  id const read = objc_loadWeakRetained(&place);
  EXPECT_EQ(read, object);
  EXPECT_EQ([object retainCount], 2U);
  [read release];
  objc_destroyWeak(&place);
  [object release];
}

TEST_F(WeakReference, InitialisedWithNilLoadsNil) {
  id place = reinterpret_cast<id>(8);
  EXPECT_EQ(objc_initWeak(&place, nil), nil);
  EXPECT_EQ(objc_loadWeakRetained(&place), nil);
  EXPECT_EQ(objc_loadWeak(&place), nil);
  objc_destroyWeak(&place);
}

TEST_F(WeakReference, IsNilWhenTheObjectIsGone) {
  id place;
  WeakSample *const object = [[WeakSample alloc] init];
  objc_initWeak(&place, object);
  [object release];
  EXPECT_EQ(place, nil);
  EXPECT_EQ(objc_loadWeakRetained(&place), nil);
  objc_destroyWeak(&place);
}

TEST_F(WeakReference, DoesNotKeepTheObject) {
  id place;
  const long before = deallocated;
  WeakSample *const object = [[WeakSample alloc] init];
  objc_initWeak(&place, object);
  EXPECT_EQ([object retainCount], 1U);
  [object release];
  EXPECT_EQ(deallocated, before + 1);
  objc_destroyWeak(&place);
}

TEST_F(WeakReference, LoadedKeepsTheObjectUntilThePoolGoes) {
  id place;
  const long before = deallocated;
  WeakSample *const object = [[WeakSample alloc] init];
  objc_initWeak(&place, object);
  {
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    EXPECT_EQ(objc_loadWeak(&place), object);
    [object release];
    EXPECT_EQ(deallocated, before);
    EXPECT_EQ(loaded(&place), object);
    [pool release];
  }
  EXPECT_EQ(deallocated, before + 1);
  EXPECT_EQ(place, nil);
}

TEST_F(WeakReference, ReferencesToOneObjectAllBecomeNil) {
  std::vector<id> places(1000);
  WeakSample *const object = [[WeakSample alloc] init];
  for (id &place : places)
    objc_initWeak(&place, object);
  objc_destroyWeak(&places[500]);
  [object release];
  for (const id place : places)
    EXPECT_EQ(place, nil);
}

TEST_F(WeakReference, StoredAnewRefersToTheNewObjectAlone) {
  id place;
  WeakSample *const first = [[WeakSample alloc] init];
  WeakSample *const second = [[WeakSample alloc] init];
  objc_initWeak(&place, first);
  EXPECT_EQ(objc_storeWeak(&place, second), second);
  [first release];
  EXPECT_EQ(loaded(&place), second);
  EXPECT_EQ(objc_storeWeak(&place, nil), nil);
  EXPECT_EQ(loaded(&place), nil);
  [second release];
}

TEST_F(WeakReference, StoredWithTheSameObjectStaysRegisteredOnce) {
  id place;
  WeakSample *const object = [[WeakSample alloc] init];
  objc_initWeak(&place, object);
  objc_storeWeak(&place, object);
  objc_destroyWeak(&place);
  place = reinterpret_cast<id>(8);
  [object release];
  // A place that was left registered would have been cleared.
  EXPECT_EQ(place, reinterpret_cast<id>(8));
}

TEST_F(WeakReference, CopiedGivesTwoAndMovedGivesOne) {
  id first;
  id second;
  WeakSample *const object = [[WeakSample alloc] init];
  objc_initWeak(&first, object);
  objc_copyWeak(&second, &first);
  EXPECT_EQ(loaded(&first), object);
  EXPECT_EQ(loaded(&second), object);
  id third;
  objc_moveWeak(&third, &second);
  EXPECT_EQ(second, nil);
  EXPECT_EQ(loaded(&third), object);
  EXPECT_GE([object retainCount], 1U);
}

TEST_F(WeakReference, ReadWhileItsObjectDeallocatesIsNil) {
  id places[2] = {reinterpret_cast<id>(8), nil};
  WeakSample *const object = [[WeakSample alloc] init];
  object->seen_ = places;
  objc_initWeak(&places[1], object);
  [object release];
  EXPECT_EQ(places[0], nil);
}

TEST_F(WeakReference, OperationsInsideADeallocDoNotDeadlock) {
  WeakSample *const other = [[WeakSample alloc] init];
  WeakInDealloc *const object = [[WeakInDealloc alloc] init];
  object->other_ = other;
  id place;
  objc_initWeak(&place, object);
  [object release];
  EXPECT_EQ(place, nil);
  EXPECT_EQ([other retainCount], 1U);
  [other release];
}

TEST_F(WeakReference, ToAnObjectThatCountsByItselfIsNilWhenItIsGone) {
  id place;
  SelfCounting *const object = [[SelfCounting alloc] init];
  objc_initWeak(&place, object);
  id const read = objc_loadWeakRetained(&place);
  EXPECT_EQ(read, object);
  [read release];
  EXPECT_EQ(place, object);
  [object release];
  EXPECT_EQ(place, nil);
}

TEST_F(WeakReference, ToAConstantStringOrAClassStays) {
  id string;
  id klass;
  objc_initWeak(&string, @"constant");
  objc_initWeak(&klass, static_cast<id>([NSObject class]));
  EXPECT_TRUE([loaded(&string) isEqual:@"constant"]);
  EXPECT_EQ(loaded(&klass), static_cast<id>([NSObject class]));
  objc_destroyWeak(&string);
  objc_destroyWeak(&klass);
}

TEST_F(WeakReference, ToABlockIsNilWhenTheBlockIsGone) {
  int number = 7;
  id const block = [^{
    return number;
  } copy];
  id place;
  objc_initWeak(&place, block);
  id const read = objc_loadWeakRetained(&place);
  EXPECT_EQ(read, block);
  [read release];
  [block release];
  EXPECT_EQ(place, nil);
}

TEST_F(WeakReference, ToAnObjectOfFoundationIsNilWhenItIsGone) {
  id place;
  NSMutableArray *const array = [[NSMutableArray alloc] initWithCapacity:4];
  objc_initWeak(&place, array);
  [array release];
  EXPECT_EQ(place, nil);
}

TEST_F(WeakReference, ReferenceMadeToAnObjectWhoseCountIsGoneEndsTheProcess) {
  const ChildResult result = runStarter({"weak-to-the-dying"}, {{"QVDEVICE_CONTAINER", freshFolder()}});
  EXPECT_EQ(result.status, 128 + SIGABRT);
  EXPECT_THAT(result.errors, testing::StartsWith("Cannot form weak reference to instance (0x"));
  EXPECT_THAT(result.errors,
              testing::HasSubstr(") of class NSObject. It is possible that this object was over-released"));
}

// One thread drops the last reference while others read the weak one: each gets nil, or an object that is whole and
// stays.
TEST_F(WeakReference, ReadOnOtherThreadsWhileTheLastReferenceGoesIsNilOrWhole) {
  constexpr int kRounds = 20000;
  constexpr int kReaders = 3;
  const long before = deallocated;
  id place;
  objc_initWeak(&place, nil);
  std::atomic<bool> stop{false};
  std::atomic<long> broken{0};
  std::atomic<long> whole{0};
  std::vector<std::thread> readers;
  for (int i = 0; i < kReaders; ++i) {
    readers.emplace_back([&] {
      GSRegisterCurrentThread();
      while (!stop) {
        WeakSample *const object = objc_loadWeakRetained(&place);
        if (object == nil) continue;
        ++(object->mark_ == kAlive ? whole : broken);
        [object release];
      }
      GSUnregisterCurrentThread();
    });
  }
  for (int round = 0; round < kRounds; ++round) {
    WeakSample *const object = [[WeakSample alloc] init];
    objc_storeWeak(&place, object);
    if (round % 4 == 0) std::this_thread::yield();
    [object release];
  }
  stop = true;
  for (std::thread &reader : readers)
    reader.join();
  EXPECT_EQ(broken, 0);
  EXPECT_GT(whole, 0);
  EXPECT_EQ(deallocated, before + kRounds);
  EXPECT_EQ(place, nil);
}

// Two holders: one makes the weak reference and lets go, the other lets go at the same moment, a third reads.
TEST_F(WeakReference, MadeByAHolderWhileAnotherLetsGoIsNilOrWhole) {
  constexpr int kRounds = 2000;
  const long before = deallocated;
  std::atomic<long> broken{0};
  for (int round = 0; round < kRounds; ++round) {
    WeakSample *const object = [[WeakSample alloc] init];
    [object retain];
    id place = nil;
    objc_initWeak(&place, nil);
    std::atomic<int> ready{0};
    const auto meet = [&ready] {
      ++ready;
      while (ready < 3)
        std::this_thread::yield();
    };
    std::thread maker([&] {
      meet();
      objc_storeWeak(&place, object);
      [object release];
    });
    std::thread holder([&] {
      meet();
      [object release];
    });
    meet();
    for (int i = 0; i < 20; ++i) {
      WeakSample *const read = objc_loadWeakRetained(&place);
      if (read == nil) continue;
      if (read->mark_ != kAlive) ++broken;
      [read release];
    }
    maker.join();
    holder.join();
    EXPECT_EQ(place, nil);
    objc_destroyWeak(&place);
  }
  EXPECT_EQ(broken, 0);
  EXPECT_EQ(deallocated, before + kRounds);
}

TEST_F(WeakReference, PlaceStoredByManyThreadsEndsConsistent) {
  id place;
  objc_initWeak(&place, nil);
  std::vector<WeakSample *> objects;
  for (int i = 0; i < 8; ++i)
    objects.push_back([[WeakSample alloc] init]);
  std::vector<std::thread> writers;
  for (std::size_t writer = 0; writer < 4; ++writer) {
    writers.emplace_back([&, writer] {
      for (std::size_t i = 0; i < 20000; ++i)
        objc_storeWeak(&place, objects[(i * 3 + writer) % objects.size()]);
    });
  }
  for (std::thread &writer : writers)
    writer.join();
  for (WeakSample *object : objects)
    [object release];
  EXPECT_EQ(place, nil);
}

} // namespace
