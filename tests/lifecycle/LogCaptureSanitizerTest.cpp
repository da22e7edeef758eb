// A sanitizer reports to standard error unless it is told otherwise: what it finds in an app whose standard error is
// captured must reach whoever tests that app.
#include "LogChild.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

TEST_F(LogCapture, hidesNoLeakFromTheTester) {
  run({"leak"}, {}, 1);
  EXPECT_THAT(result.output, HasSubstr("LeakSanitizer: detected memory leaks"));
}

TEST_F(LogCapture, hidesNoOverrunFromTheTester) {
  run({"overrun"}, {}, 1);
  EXPECT_THAT(result.output, HasSubstr("AddressSanitizer: heap-buffer-overflow"));
}

TEST_F(LogCapture, hidesNoUndefinedBehaviourFromTheTester) {
  run({"overflow"}, {}, 1);
  EXPECT_THAT(result.output, HasSubstr("runtime error: signed integer overflow"));
}
