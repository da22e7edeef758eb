#pragma once

#include <vector>

#include "../platform/Foundation/NSSet.hpp"
#include "../platform/Foundation/NSString.hpp"

namespace qvsb {

/// The marks by which the SDK's own pasteboard items are known, as the SDK names them when this object is made:
/// prefixes of types. Main thread.
class ZorbelItemMarks {
public:
  ZorbelItemMarks();

  /// Whether one of the item's types begins with one of the marks. Nothing but a dictionary has types.
  bool areOn(Object item);

private:
  struct Mark {
    Strong<NSString> text;
    NSStringCompareOptions options;
  };

  bool areOnType(NSString type);

  std::vector<Mark> marks_;
  // Types that were searched already. Thousands of items have a handful of types between them, and an expression is
  // compiled anew for each search.
  Strong<NSMutableSet> marked_ = NSMutableSet::from(NSMutableSet::set());
  Strong<NSMutableSet> unmarked_ = NSMutableSet::from(NSMutableSet::set());
};

} // namespace qvsb
