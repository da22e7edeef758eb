#pragma once

#include "../Foundation/NSObject.hpp"

namespace qvsb {

using UIDocumentSaveOperation = NSInteger;

class UIDocument : public NSObject {
  QVSB_HANDLE(UIDocument, NSObject)
};

} // namespace qvsb
