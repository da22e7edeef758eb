// Weak references: which places refer to which object, and the functions that read and write those places.
//
// A place belongs to the stripe of the object that it refers to, and is read or written under that stripe's lock only.
// An object's own reference count decides whether it can still be had: see ReferenceCount.mm.

#include "runtime/WeakTable.h"

#import <Foundation/Foundation.h>
#include <objc/objc-arc.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "container/SystemLog.h"
#include "runtime/WeakReferences.h"

namespace qvdevice {

namespace {

constexpr std::size_t kStripes = 64;
constexpr std::size_t kFilterSlots = 4096;

struct Stripe {
  std::mutex lock;
  std::unordered_map<id, std::vector<id *>> places;
};

std::array<Stripe, kStripes> &stripes() {
  // Never destroyed: objects are deallocated until the process is gone.
  static std::array<Stripe, kStripes> &all = *new std::array<Stripe, kStripes>;
  return all;
}

/// How many referred-to objects hash to a slot. It counts up before the first reference to an object exists.
constinit std::array<std::atomic<std::uint32_t>, kFilterSlots> filter{};

/// Objects are 16-byte aligned: the low bits say nothing.
std::size_t hashOf(id object) {
  const auto address = reinterpret_cast<std::uintptr_t>(object) >> 4;
  return address ^ (address >> 12);
}

std::atomic<std::uint32_t> &filterOf(id object) { return filter[hashOf(object) % kFilterSlots]; }
Stripe &stripeOf(id object) { return stripes()[hashOf(object) % kStripes]; }

// The compiler's atomic operations know plain pointers only, not `id`.
using Place = void **;
id readPlace(id *location) {
  return static_cast<id>(__atomic_load_n(reinterpret_cast<Place>(location), __ATOMIC_ACQUIRE));
}
void writePlace(id *location, id object) {
  __atomic_store_n(reinterpret_cast<Place>(location), static_cast<void *>(object), __ATOMIC_RELEASE);
}

/// Both objects' stripes, or the one of the object that is not nil, locked in the order of their addresses.
class LockedStripes {
public:
  LockedStripes(id first, id second) {
    Stripe *a = first != nil ? &stripeOf(first) : nullptr;
    Stripe *b = second != nil ? &stripeOf(second) : nullptr;
    if (a == b) b = nullptr;
    if (a != nullptr && b != nullptr && b < a) std::swap(a, b);
    if (a != nullptr) first_ = std::unique_lock(a->lock);
    if (b != nullptr) second_ = std::unique_lock(b->lock);
  }

private:
  std::unique_lock<std::mutex> first_;
  std::unique_lock<std::mutex> second_;
};

void addPlace(id object, id *location) {
  std::vector<id *> &places = stripeOf(object).places[object];
  if (places.empty()) filterOf(object).fetch_add(1, std::memory_order_relaxed);
  places.push_back(location);
}

void removePlace(id object, id *location) {
  auto &objects = stripeOf(object).places;
  const auto found = objects.find(object);
  if (found == objects.end()) return;
  std::erase(found->second, location);
  if (!found->second.empty()) return;
  objects.erase(found);
  filterOf(object).fetch_sub(1, std::memory_order_relaxed);
}

/// The platform ends a process that makes a weak reference to an object that is on its way out.
void requireThatItLives(id object) {
  if (object == nil || [object allowsWeakReference]) return;
  char sentence[512];
  std::snprintf(sentence, sizeof sentence,
                "Cannot form weak reference to instance (%p) of class %s. It is possible that this object was "
                "over-released, or is in the process of deallocation.\n",
                static_cast<void *>(object), object_getClassName(object));
  systemLog(sentence);
  std::abort();
}

/// Refers `location` to `object` instead of what it referred to, and answers `object`.
id assign(id *location, id object) {
  for (;;) {
    const id old = readPlace(location);
    const LockedStripes locked(old, object);
    // Another thread may have changed the place, or cleared it, before the locks were ours.
    if (readPlace(location) != old) continue;
    requireThatItLives(object);
    if (old != nil) removePlace(old, location);
    if (object != nil) addPlace(object, location);
    writePlace(location, object);
    return object;
  }
}

} // namespace

bool mayHaveWeakReferences(id object) { return filterOf(object).load(std::memory_order_relaxed) != 0; }

void clearWeakReferences(id object) {
  Stripe &stripe = stripeOf(object);
  const std::lock_guard locked(stripe.lock);
  const auto found = stripe.places.find(object);
  if (found == stripe.places.end()) return;
  for (id *location : found->second)
    writePlace(location, nil);
  stripe.places.erase(found);
  filterOf(object).fetch_sub(1, std::memory_order_relaxed);
}

} // namespace qvdevice

using namespace qvdevice;

id objc_initWeak(id *location, id object) {
  // The place holds anything at all until now.
  writePlace(location, nil);
  return assign(location, object);
}

id objc_storeWeak(id *location, id object) { return assign(location, object); }

void objc_destroyWeak(id *location) { assign(location, nil); }

id objc_loadWeakRetained(id *location) {
  for (;;) {
    const id object = readPlace(location);
    if (object == nil) return nil;
    const std::lock_guard locked(stripeOf(object).lock);
    // While the place still refers to the object and the lock is ours, the object's memory stays.
    if (readPlace(location) != object) continue;
    return [object retainWeakReference] ? object : nil;
  }
}

id objc_loadWeak(id *location) { return [objc_loadWeakRetained(location) autorelease]; }

void objc_copyWeak(id *to, id *from) {
  const id object = objc_loadWeakRetained(from);
  objc_initWeak(to, object);
  [object release];
}

void objc_moveWeak(id *to, id *from) {
  objc_copyWeak(to, from);
  objc_destroyWeak(from);
}
