#include "Targets.h"

#include <hwy/targets.h>

std::vector<std::int64_t> targets() {
  std::vector<std::int64_t> each;
  // The library that asks the processor knows kinds that this compiler makes no code for.
  for (std::int64_t left = hwy::SupportedTargets() & HWY_TARGETS; left != 0; left &= left - 1) {
    each.push_back(left & -left);
  }
  return each;
}

std::string name(std::int64_t target) { return hwy::TargetName(target); }

OnTarget::OnTarget(std::int64_t target) {
  hwy::SetSupportedTargetsForTest(target);
  hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

OnTarget::~OnTarget() {
  hwy::SetSupportedTargetsForTest(0);
  hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}
