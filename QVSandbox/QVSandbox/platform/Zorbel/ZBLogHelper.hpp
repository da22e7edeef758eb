// The management SDK's log files.
#pragma once

#include "../Foundation/NSDate.hpp"
#include "../Foundation/NSString.hpp"

namespace qvsb {

class ZBLogHelper : public NSObject {
  QVSB_HANDLE(ZBLogHelper, NSObject)
  /// Makes room for another file: the oldest go.
  QVSB_CLASS_METHOD(void, rotateLogFiles, "rotateLogFiles")
  QVSB_CLASS_METHOD(NSString, appendDate_toFileName, "appendDate:toFileName:", NSDate, NSString)
  /// Makes an empty file and gives its path; nil when that fails.
  QVSB_CLASS_METHOD(NSString, createLogFileWithName, "createLogFileWithName:", NSString)
};

} // namespace qvsb
