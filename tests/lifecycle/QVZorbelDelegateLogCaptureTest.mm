// Whether standard error is captured, as the configuration has it.
#include "DelegateTest.h"

namespace {

/// With an SDK that is ready.
class CaptureDecision : public DelegateTest {
protected:
  void SetUp() override {
    DelegateTest::SetUp();
    sdk->ready = YES;
  }

  void evaluate(bool wanted, bool isOn) {
    [sdk->config release];
    sdk->config = wanted ? [@{@"QV_ZB_WR_ENABLE_LOG_CAPTURE" : @YES} retain] : nil;
    captureIsOn = isOn;
    [delegate triggerLogsInterception];
  }
};

} // namespace

TEST_F(CaptureDecision, ThatIsWantedAndOnGoesOn) {
  evaluate(true, true);
  EXPECT_EQ(take(), Lines());
  EXPECT_EQ([delegate triggeredLog], YES);
}

TEST_F(CaptureDecision, ThatIsWantedAndOffStarts) {
  evaluate(true, false);
  EXPECT_EQ(take(), Lines{"capture started"});
  EXPECT_EQ([delegate triggeredLog], YES);
}

TEST_F(CaptureDecision, ThatIsNotWantedAndOffStaysOff) {
  evaluate(false, false);
  EXPECT_EQ(take(), Lines());
  EXPECT_EQ([delegate triggeredLog], YES);
}

TEST_F(CaptureDecision, ThatTheFirstEvaluationStopsLosesItsFileAndLaterOnesKeepTheirs) {
  evaluate(false, true);
  EXPECT_EQ(take(), Lines{"capture stopped, file removed"});
  evaluate(false, true);
  EXPECT_EQ(take(), Lines{"capture stopped, file kept"});
}

TEST_F(CaptureDecision, ThatAnEvaluationFoundWantedKeepsItsFileWhenItIsStoppedLater) {
  evaluate(true, true);
  evaluate(false, true);
  EXPECT_EQ(take(), Lines{"capture stopped, file kept"});
}

TEST_F(CaptureDecision, IsNotWantedAsLongAsTheSDKIsNotReadyOrHasGone) {
  sdk->ready = NO;
  evaluate(true, true);
  EXPECT_EQ(take(), Lines{"capture stopped, file removed"});
  releaseSDK();
  captureIsOn = true;
  [delegate triggerLogsInterception];
  EXPECT_EQ(take(), Lines{"capture stopped, file kept"});
}
