#include "Coverage.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <sys/mman.h>
#include <unistd.h>

#include "HookReasons.h"

namespace qvdevice {

namespace {

using Json = nlohmann::ordered_json;

/// A page of any kernel.
constexpr std::size_t kSize = 65536;
constexpr std::size_t kCounters = kSize / sizeof(std::uint64_t);
/// The number that the process finds the memory under, if it looks in time.
constexpr int kDescriptor = 5;

bool areTheSame(const Json& left, const Json& right) {
  return left["class"] == right["class"] && left["selector"] == right["selector"] &&
         left["classMethod"] == right["classMethod"];
}

} // namespace

Coverage::Coverage() : descriptor_(memfd_create("qvdevice-counters", MFD_CLOEXEC)), counters_(nullptr) {
  void* const memory = descriptor_ >= 0 && ftruncate(descriptor_, kSize) == 0
                           ? mmap(nullptr, kSize, PROT_READ, MAP_SHARED, descriptor_, 0)
                           : MAP_FAILED;
  if (memory == MAP_FAILED) {
    const int reason = errno;
    if (descriptor_ >= 0) {
      close(descriptor_);
    }
    throw std::system_error(reason, std::generic_category(), "no memory to count in");
  }
  counters_ = static_cast<const std::uint64_t*>(memory);
}

Coverage::~Coverage() {
  munmap(const_cast<std::uint64_t*>(counters_), kSize);
  close(descriptor_);
}

void Coverage::giveTo(Launch& launch) const {
  launch.descriptors.emplace_back(descriptor_, kDescriptor);
  launch.environment["QVDEVICE_COUNTERS_FD"] = std::to_string(kDescriptor);
}

void Coverage::note(const Json& record) {
  if (record.value("kind", "") != "hook") {
    return;
  }
  const Json hook = completed(record);
  const auto known =
      std::find_if(hooks_.begin(), hooks_.end(), [&](const Json& other) { return areTheSame(hook, other); });
  if (known == hooks_.end()) {
    hooks_.push_back(hook);
  } else {
    *known = hook;
  }
}

Json Coverage::record() const {
  Json hooks = Json::array();
  for (const Json& hook : hooks_) {
    Json line{{"class", hook["class"]},
              {"selector", hook["selector"]},
              {"classMethod", hook["classMethod"]},
              {"state", hook["state"]}};
    if (hook.contains("why")) {
      line["why"] = hook["why"];
    }
    const auto counter = hook.value("counter", kCounters);
    // The process may be writing still, if it hangs.
    line["fired"] = counter < kCounters ? Json(__atomic_load_n(counters_ + counter, __ATOMIC_RELAXED)) : Json();
    hooks.push_back(std::move(line));
  }
  return {{"kind", "coverage"}, {"hooks", std::move(hooks)}};
}

std::vector<std::string> coverageInWords(const Json& record) {
  std::vector<std::string> rows;
  for (const Json& hook : record.value("hooks", Json::array())) {
    const Json fired = hook.value("fired", Json());
    const std::string state = hook.value("state", "");
    std::string count = fired.is_number() ? std::to_string(fired.get<std::uint64_t>()) : "-";
    count.insert(0, count.size() < 6 ? 6 - count.size() : 0, ' ');
    rows.push_back(count + "  " + (hook.value("classMethod", false) ? "+[" : "-[") + hook.value("class", "") + " " +
                   hook.value("selector", "") + "]" +
                   (state == "installed" ? "" : "   " + state + ": " + hook.value("why", "")));
  }
  return rows;
}

} // namespace qvdevice
