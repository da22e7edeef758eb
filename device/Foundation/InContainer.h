// The system's confinement covers what is written into files, not their attributes: those are guarded here.
#pragma once

namespace qvdevice {

// 0 when the item lies in this app's container; else the errno that refuses to touch its attributes. `isLink` tells
// that the item is a link, whose destination must lie there too.
int refusalOutsideContainer(const char* path, bool isLink);

} // namespace qvdevice
