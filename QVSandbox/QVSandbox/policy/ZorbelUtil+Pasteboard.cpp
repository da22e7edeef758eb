#include "ZorbelUtil+Pasteboard.hpp"

#include "../platform/Foundation/NSFastEnumeration.hpp"
#include "../platform/Foundation/NSSet.hpp"
#include "PasteboardItemSet.hpp"
#include "ZorbelItemMarks.hpp"
#include "ZorbelUtilState.hpp"

namespace qvsb {

namespace {

/// The general pasteboard as the SDK gives access to it; nil without an SDK. Whether that is ready does not matter.
UIPasteboard pasteboardOf(Object self) {
  return ZorbelUtilState::of(self).zorbel().proxyForPasteboard(UIPasteboard::generalPasteboard());
}

/// Items, the SDK's own apart from the rest.
struct PartedItems {
  PasteboardItemSet zorbel;
  PasteboardItemSet rest;

  PartedItems(NSArray items, ZorbelItemMarks& marks) {
    forEach(items, [&](Object item) {
      // What the search leaves behind goes with each item: there may be thousands.
      const AutoreleasePool pool;
      (marks.areOn(item) ? zorbel : rest).insert(NSObject::from(item));
    });
  }
};

void takeSnapshot(Object self, SEL) { send<void>(self, "_snapshotPasteboard"_sel); }

void restoreSnapshot(Object self, SEL) {
  if (!ZorbelUtil::from(self).allowsPasteboard()) {
    send<void>(self, "_restorePasteboardSnapshot"_sel);
  }
}

void snapshotPasteboard(Object self, SEL) {
  ZorbelUtilState::of(self).setPasteboardSnapshot(pasteboardOf(self).items());
}

void restorePasteboardSnapshot(Object self, SEL) {
  const UIPasteboard pasteboard = pasteboardOf(self);
  const Strong<NSArray> snapshot = ZorbelUtilState::of(self).pasteboardSnapshot();
  const Strong<NSArray> items = pasteboard.items();
  ZorbelItemMarks marks;
  const PartedItems then(snapshot, marks);
  const PartedItems now(items, marks);
  if (now.rest.empty() || now.rest == then.rest) {
    return;
  }
  const NSMutableArray restored = NSMutableArray::array();
  for (const NSObject item : then.rest) {
    restored.addObject(item);
  }
  for (const NSObject item : now.zorbel) {
    restored.addObject(item);
  }
  pasteboard.setItems(restored);
}

/// A pasteboard that somebody has emptied is not to be filled with old contents again.
void pasteboardContentChanged(Object self, SEL, Object) {
  ZorbelUtilState& state = ZorbelUtilState::of(self);
  if (state.pasteboardSnapshot() && pasteboardOf(self).items().count() == 0) {
    state.setPasteboardSnapshot(NSArray::array());
  }
}

BOOL isZorbelItem(Object, SEL, Object item) { return ZorbelItemMarks().areOn(item); }

NSSet zorbelItems(Object, SEL, NSArray items) {
  ZorbelItemMarks marks;
  const PartedItems parted(items, marks);
  const auto set = NSMutableSet::from(NSMutableSet::set());
  for (const NSObject item : parted.zorbel) {
    set.addObject(item);
  }
  return set;
}

constexpr MethodEntry instanceMethods[] = {
    method<&takeSnapshot>("takeSnapshot"),
    method<&restoreSnapshot>("restoreSnapshot"),
    method<&snapshotPasteboard>("_snapshotPasteboard"),
    method<&restorePasteboardSnapshot>("_restorePasteboardSnapshot"),
    method<&pasteboardContentChanged>("pasteboardContentChanged:"),
    method<&isZorbelItem>("_isZorbelItem:"),
    method<&zorbelItems>("_zorbelItems:"),
};

} // namespace

constinit const Category ZorbelUtilPasteboard{"ZorbelUtil", "Pasteboard", instanceMethods, {}};

} // namespace qvsb
