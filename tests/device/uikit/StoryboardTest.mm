// The window that an app with a main storyboard finds ready.

#include "RunningApp.h"

namespace {

class StoryboardApp : public RunningApp {
public:
  explicit StoryboardApp(const std::string &delegate)
      : RunningApp(STORYBOARD_APP, {"STORYBOARD_DELEGATE=" + delegate}) {}
};

TEST(Storyboard, GivesTheDelegateAWindowBeforeTheLaunchAndShowsItAfterwards) {
  StoryboardApp app("WindowDelegate");
  const std::string active = "active: a window, shown, root UIViewController";
  EXPECT_EQ(app.until(active), (Lines{"will finish launching: a window, not shown, root UIViewController",
                                      "did finish launching: a window, not shown, root UIViewController", active}));
}

TEST(Storyboard, ADelegateWithoutAWindowIsToldOfInTheLogAndNothingIsShown) {
  StoryboardApp app("BareDelegate");
  const std::string active = "active: no window, not shown, root none";
  const Lines said = app.until(active);
  ASSERT_EQ(said.size(), 2u);
  EXPECT_NE(said.at(0).find("The app delegate must implement the window property if it wants to use a main "
                            "storyboard file."),
            std::string::npos)
      << said.at(0);
}

TEST(Storyboard, AWindowThatTheAppPutInItsPlaceIsShownInstead) {
  StoryboardApp app("ReplacingDelegate");
  const std::string active = "active: a window, shown, root UINavigationController";
  EXPECT_EQ(app.until(active), (Lines{"will finish launching: a window, not shown, root UIViewController", active}));
}

} // namespace
