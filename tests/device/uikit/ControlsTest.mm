// What there is on the screen to be used, told to whoever asks from outside.

#include "RunningApp.h"

namespace {

constexpr const char *kControls = R"({"do":"controls"})";

TEST(Controls, AreTheButtonsThatAreShownInTheirOrderAndWhetherTheyAreEnabled) {
  RunningApp app(INPUT_APP);
  app.until("active");
  EXPECT_EQ(app.command(kControls), ok);
  EXPECT_EQ(app.result(),
            R"({"buttons":[{"enabled":true,"title":"Press"},{"enabled":false,"title":"Disabled"},)"
            R"({"enabled":true,"title":"Twin"},{"enabled":true,"title":"Twin"},{"enabled":true,"title":"Covered"}],)"
            R"("editing":false,"field":true,"unusable":null})");
  EXPECT_EQ(app.inputs(), Lines{}) << "a look leaves no trace";
}

TEST(Controls, SayWhetherSomebodyIsWrittenInto) {
  RunningApp app(INPUT_APP);
  app.until("active");
  EXPECT_EQ(app.command(R"({"do":"keyboard","wish":"show"})"), ok);
  EXPECT_EQ(app.command(kControls), ok);
  EXPECT_NE(app.result().find(R"("editing":true)"), std::string::npos) << app.result();
}

TEST(Controls, AreToldWithTheReasonWhenNobodyCanUseThem) {
  RunningApp app(INPUT_APP);
  app.until("active");
  EXPECT_EQ(app.command("resignActive"), ok);
  EXPECT_EQ(app.command(kControls), ok);
  EXPECT_NE(app.result().find(R"("unusable":"the app is not active")"), std::string::npos) << app.result();
  EXPECT_NE(app.result().find(R"("title":"Press")"), std::string::npos) << app.result();
}

TEST(Controls, OfAnAppWithoutAWindowAreNone) {
  RunningApp app(INPUT_APP, {"INPUT_DO=no window"});
  app.until("active");
  EXPECT_EQ(app.command(kControls), ok);
  EXPECT_EQ(app.result(), R"({"buttons":[],"editing":false,"field":false,"unusable":null})");
}

TEST(Controls, TakeNoArgument) {
  RunningApp app(INPUT_APP);
  app.until("active");
  EXPECT_EQ(app.command(R"({"do":"controls","of":"x"})"),
            refusal("\"of\" is not among what this command takes (nothing)"));
  EXPECT_EQ(app.command(R"({"do":"offers","of":"x"})"),
            refusal("\"of\" is not among what this command takes (nothing)"));
}

TEST(Offers, AreNoneWhileNothingIsShown) {
  RunningApp app(INPUT_APP);
  app.until("active");
  EXPECT_EQ(app.command(R"({"do":"offers"})"), ok);
  EXPECT_EQ(app.result(), R"({"by":null,"titles":[]})");
}

} // namespace
