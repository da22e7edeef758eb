// Windows, alerts, the keyboard and the way the device is held, commanded and told of.

#include "RunningApp.h"

namespace {

class WindowApp : public RunningApp {
public:
  explicit WindowApp(std::vector<std::string> environment = {}) : RunningApp(INPUT_APP, std::move(environment)) {
    until("active");
  }

  // The last table of windows, "class level" each, with what else holds of it.
  Lines windows() {
    EXPECT_EQ(command("windows"), ok);
    // What the app says next comes behind the trace.
    EXPECT_EQ(command("resignActive"), ok);
    EXPECT_EQ(command("becomeActive"), ok);
    until("active");
    Lines found;
    const auto table = nlohmann::json::parse(traced("windows").back());
    for (const auto &row : table.at("windows"))
      found.push_back(row.at("class").get<std::string>() + " " + std::to_string(row.at("level").get<long>()) +
                      (row.at("visible").get<bool>() ? " visible" : "") + (row.at("key").get<bool>() ? " key" : "") +
                      (row.at("controllers").empty() ? "" : " " + row.at("controllers").dump()));
    return found;
  }
};

TEST(WindowCommands, TellOfTheAppsOwnWindow) {
  WindowApp app;
  EXPECT_EQ(app.windows(), Lines{R"(UIWindow 0 visible key ["InputController"])"});
}

TEST(WindowCommands, ShowMakeKeyHideAndClose) {
  WindowApp app;
  EXPECT_EQ(app.command(R"({"do":"window","wish":"show","name":"Banner","level":3000})"), ok);
  EXPECT_EQ(app.windows(), (Lines{R"(UIWindow 3000 visible ["UIViewController \"Banner\""])",
                                  R"(UIWindow 0 visible key ["InputController"])"}));
  EXPECT_EQ(app.command(R"({"do":"window","wish":"key","name":"Banner"})"), ok);
  EXPECT_EQ(app.windows().at(0), R"(UIWindow 3000 visible key ["UIViewController \"Banner\""])");
  EXPECT_EQ(app.command(R"({"do":"window","wish":"hide","name":"Banner"})"), ok);
  EXPECT_EQ(app.windows(), (Lines{R"(UIWindow 3000 ["UIViewController \"Banner\""])",
                                  R"(UIWindow 0 visible key ["InputController"])"}));
  EXPECT_EQ(app.command(R"({"do":"window","wish":"show","name":"Banner"})"), ok);
  EXPECT_EQ(app.windows().at(0), R"(UIWindow 3000 visible ["UIViewController \"Banner\""])") << "its level is kept";
  EXPECT_EQ(app.command(R"({"do":"window","wish":"close","name":"Banner"})"), ok);
  EXPECT_EQ(app.windows(), Lines{R"(UIWindow 0 visible key ["InputController"])"});
}

TEST(WindowCommands, ThatCannotBeAreRefusedWithAReason) {
  WindowApp app;
  EXPECT_EQ(app.command(R"({"do":"window","wish":"key","name":"A"})"),
            refusal("there is no window \"A\"; \"show\" makes one"));
  EXPECT_EQ(app.command(R"({"do":"window","wish":"break","name":"A"})"),
            refusal("\"wish\" must be \"show\", \"key\", \"hide\" or \"close\""));
  EXPECT_EQ(app.command(R"({"do":"window","wish":"show"})"), refusal("\"name\" is missing"));
  EXPECT_EQ(app.command(R"({"do":"window","name":"A"})"), refusal("\"wish\" is missing"));
  EXPECT_EQ(app.command(R"({"do":"window","wish":"show","name":"A","level":"high"})"),
            refusal("\"level\" must be a number"));
  EXPECT_EQ(app.command(R"({"do":"window","wish":"hide","name":"A","level":1})"),
            refusal("\"level\" goes with \"show\""));
  EXPECT_EQ(app.command(R"({"do":"windows","all":true})"),
            refusal("\"all\" is not among what this command takes (nothing)"));
  EXPECT_EQ(app.command(R"({"do":"rotate","orientation":"left"})"),
            refusal("\"orientation\" must be one of portrait, portraitUpsideDown, landscapeLeft, landscapeRight, "
                    "faceUp, faceDown"));
  EXPECT_EQ(app.command("alert"), refusal("\"title\" is missing"));
  EXPECT_EQ(app.command(R"({"do":"keyboard","wish":"type"})"), refusal("\"wish\" must be \"show\" or \"hide\""));
  EXPECT_EQ(app.command(R"({"do":"keyboard","wish":"hide"})"),
            refusal("nothing is being edited: there is no first responder"));
  EXPECT_EQ(app.windows(), Lines{R"(UIWindow 0 visible key ["InputController"])"});
}

TEST(WindowCommands, OfTheUsersAreRefusedWhileTheAppIsNotActive) {
  WindowApp app;
  EXPECT_EQ(app.command("resignActive"), ok);
  EXPECT_EQ(app.command(R"({"do":"alert","title":"A"})"), refusal("the app is not active"));
  EXPECT_EQ(app.command(R"({"do":"rotate","orientation":"portrait"})"), refusal("the app is not active"));
  EXPECT_EQ(app.command("windows"), ok);
  EXPECT_EQ(app.command(R"({"do":"window","wish":"show","name":"A"})"), ok) << "the app's own doing";
}

TEST(AlertCommand, ShowsAnAlertThatGoesWithATap) {
  WindowApp app;
  EXPECT_EQ(app.command(R"({"do":"alert","title":"Saved"})"), ok);
  EXPECT_EQ(
      app.windows(),
      (Lines{
          R"(_UIAlertControllerShimPresenterWindow 2000 visible key ["UIViewController","UIAlertController \"Saved\""])",
          R"(UIWindow 0 visible ["InputController"])"}));
  EXPECT_EQ(app.command(R"({"do":"tap","title":"Press"})"),
            refusal("a touch on the button \"Press\" would not reach it"));
  EXPECT_EQ(app.command(R"({"do":"tap","title":"OK"})"), ok);
  EXPECT_EQ(app.windows(), Lines{R"(UIWindow 0 visible key ["InputController"])"});
}

TEST(KeyboardCommand, BringsTheKeyboardUpAndPutsItAway) {
  WindowApp app;
  EXPECT_EQ(app.command(R"({"do":"keyboard","wish":"show"})"), ok);
  app.until("editing begins");
  EXPECT_EQ(app.windows(),
            (Lines{"UITextEffectsWindow 10000000 visible", R"(UIWindow 0 visible key ["InputController"])"}));
  EXPECT_EQ(app.command(R"({"do":"keyboard","wish":"show"})"), ok) << "it is there already";
  EXPECT_EQ(app.command(R"({"do":"keyboard","wish":"hide"})"), ok);
  app.until("editing ends with \"\"");
  EXPECT_EQ(app.windows(), (Lines{"UITextEffectsWindow 10000000", R"(UIWindow 0 visible key ["InputController"])"}));
}

TEST(KeyboardCommand, WithoutATextFieldIsRefused) {
  WindowApp app({"INPUT_DO=no window"});
  EXPECT_EQ(app.command(R"({"do":"keyboard","wish":"show"})"), refusal("there is no text field on the screen"));
}

TEST(RotateCommand, TellsWhoWasAskedAndWhetherTheScreenTurned) {
  WindowApp app;
  EXPECT_EQ(app.command(R"({"do":"rotate","orientation":"landscapeLeft"})"), ok);
  EXPECT_EQ(app.command(R"({"do":"rotate","orientation":"portraitUpsideDown"})"), ok);
  EXPECT_EQ(app.command(R"({"do":"rotate","orientation":"faceUp"})"), ok);
  EXPECT_EQ(app.windows(), Lines{R"(UIWindow 0 visible key ["InputController"])"});
  EXPECT_EQ(app.traced("rotation"),
            (Lines{R"({"allowed":true,"asked":"InputController","orientation":"landscapeRight"})",
                   R"({"allowed":false,"asked":"InputController","orientation":"portraitUpsideDown"})"}));
}

} // namespace
