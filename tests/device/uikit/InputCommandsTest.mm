// What the user does, asked for from outside.

#include "RunningApp.h"

namespace {

class InputApp : public RunningApp {
public:
  explicit InputApp(std::vector<std::string> environment = {}) : RunningApp(INPUT_APP, std::move(environment)) {
    until("active");
  }

  // Puts the text field to use, and leaves what the app said of it behind.
  void edit() {
    EXPECT_EQ(command(R"({"do":"touch","x":50,"y":410})"), ok);
    EXPECT_EQ(until("editing begins"), (Lines{"sendEvent: type 0, 1 touch, began", "sendEvent: type 0, 1 touch, ended",
                                              "asked for com.apple.keyboard-service", "editing begins"}));
  }
};

TEST(Touch, ComesAsTwoEventsThroughTheApplicationToTheViewThatItIsOn) {
  InputApp app;
  EXPECT_EQ(app.command(R"({"do":"touch","x":60.5,"y":520})"), ok);
  EXPECT_EQ(app.until("ended at 50.5, 20 of the view and 60.5, 520 of the window"),
            (Lines{"sendEvent: type 0, 1 touch, began", "began at 50.5, 20 of the view and 60.5, 520 of the window",
                   "sendEvent: type 0, 1 touch, ended", "ended at 50.5, 20 of the view and 60.5, 520 of the window"}));
  EXPECT_EQ(app.inputs(), Lines{R"({"event":"touch","view":"TouchedView","x":60.5,"y":520.0})"});
}

TEST(Touch, WithoutAPlaceIsOnTheMiddleOfTheScreen) {
  InputApp app;
  EXPECT_EQ(app.command("touch"), ok);
  app.until("sendEvent: type 0, 1 touch, ended");
  EXPECT_EQ(app.inputs(), Lines{R"({"event":"touch","view":"UIView","x":195.0,"y":422.0})"});
}

TEST(Touch, OnAPadIsOnTheMiddleOfAPadsScreen) {
  InputApp app({R"(QVDEVICE_SETTINGS={"idiom":"pad"})"});
  EXPECT_EQ(app.command("touch"), ok);
  app.until("sendEvent: type 0, 1 touch, ended");
  EXPECT_EQ(app.inputs(), Lines{R"({"event":"touch","view":"UIView","x":410.0,"y":590.0})"});
}

TEST(Touch, WhereNoWindowIsShownReachesTheApplicationAlone) {
  InputApp app({"INPUT_DO=no window"});
  EXPECT_EQ(app.command("touch"), ok);
  EXPECT_EQ(app.until("sendEvent: type 0, 1 touch, ended"),
            (Lines{"sendEvent: type 0, 1 touch, began", "sendEvent: type 0, 1 touch, ended"}));
  EXPECT_EQ(app.inputs(), Lines{R"({"event":"touch","view":null,"x":195.0,"y":422.0})"});
}

TEST(Touch, MayRemoveTheViewThatItIsOn) {
  InputApp app({"INPUT_DO=remove"});
  const char *const touch = R"({"do":"touch","x":60,"y":520})";
  EXPECT_EQ(app.command(touch), ok);
  EXPECT_EQ(app.command(touch), ok);
  EXPECT_EQ(app.command("resignActive"), ok) << "still there";
  EXPECT_EQ(app.until("ended at 50, 20 of the view and 60, 520 of the window").size(), 4u);
  app.until("sendEvent: type 0, 1 touch, ended");
  EXPECT_EQ(app.inputs(), (Lines{R"({"event":"touch","view":"TouchedView","x":60.0,"y":520.0})",
                                 R"({"event":"touch","view":"UIView","x":60.0,"y":520.0})"}));
}

TEST(Touch, ThatCannotBeIsRefusedWithAReason) {
  InputApp app;
  EXPECT_EQ(app.command(R"({"do":"touch","x":1})"), refusal("\"x\" and \"y\" go together"));
  EXPECT_EQ(app.command(R"({"do":"touch","y":1,"x":null})"), refusal("\"x\" and \"y\" go together"));
  EXPECT_EQ(app.command(R"({"do":"touch","x":"1","y":"2"})"), refusal("\"x\" and \"y\" must be numbers"));
  EXPECT_EQ(app.command(R"({"do":"touch","x":390,"y":0})"),
            refusal("(390, 0) is not on the screen, which is 390 x 844"));
  EXPECT_EQ(app.command(R"({"do":"touch","x":-1,"y":0})"), refusal("(-1, 0) is not on the screen, which is 390 x 844"));
  EXPECT_EQ(app.command(R"({"do":"touch","at":1})"), refusal("\"at\" is not among what this command takes (x, y)"));
  EXPECT_EQ(app.inputs(), Lines{});
}

TEST(Input, OfEveryKindIsRefusedWhileTheAppIsNotActive) {
  InputApp app;
  const char *const commands[] = {
      R"({"do":"touch"})",           R"({"do":"tap","title":"Press"})", R"({"do":"perform","action":"answer:"})",
      R"({"do":"type","text":"a"})", R"({"do":"dictate","text":"a"})",  R"({"do":"keyboard"})"};
  EXPECT_EQ(app.command("resignActive"), ok);
  for (const char *command : commands)
    EXPECT_EQ(app.command(command), refusal("the app is not active")) << command;
  EXPECT_EQ(app.command("enterBackground"), ok);
  for (const char *command : commands)
    EXPECT_EQ(app.command(command), refusal("the app is in the background")) << command;
}

TEST(Tap, PressesTheButtonWithThatTitle) {
  InputApp app;
  EXPECT_EQ(app.command(R"({"do":"tap","title":"Press"})"), ok);
  EXPECT_EQ(app.until("pressed Press, ended"),
            (Lines{"sendEvent: type 0, 1 touch, began", "sendEvent: type 0, 1 touch, ended", "pressed Press, ended"}));
  EXPECT_EQ(app.inputs(), Lines{R"({"event":"touch","view":"UIButton","x":60.0,"y":120.0})"});
}

TEST(Tap, OfAButtonThatCannotBePressedIsRefusedWithAReason) {
  InputApp app;
  const auto tap = [&](const std::string &title) { return app.command("{\"do\":\"tap\",\"title\":" + title + "}"); };
  const std::string titles = "\"Press\", \"Disabled\", \"Twin\", \"Twin\", \"Covered\"";
  EXPECT_EQ(tap("\"Nowhere\""), refusal("no button that is shown has the title \"Nowhere\"; the titles are " + titles));
  EXPECT_EQ(tap("\"Hidden\""), refusal("no button that is shown has the title \"Hidden\"; the titles are " + titles));
  EXPECT_EQ(tap("\"Disabled\""), refusal("the button \"Disabled\" is disabled"));
  EXPECT_EQ(tap("\"Twin\""), refusal("2 buttons that are shown have the title \"Twin\""));
  EXPECT_EQ(tap("\"Covered\""), refusal("a touch on the button \"Covered\" would not reach it"));
  EXPECT_EQ(tap("\"\""), refusal("\"title\" must be a text that is not empty"));
  EXPECT_EQ(tap("7"), refusal("\"title\" must be a text that is not empty"));
  EXPECT_EQ(app.command("tap"), refusal("\"title\" is missing"));
  EXPECT_EQ(app.inputs(), Lines{});
}

TEST(Tap, WithoutAnyButtonSaysThatThereIsNone) {
  InputApp app({"INPUT_DO=no window"});
  EXPECT_EQ(app.command(R"({"do":"tap","title":"Press"})"),
            refusal("no button that is shown has the title \"Press\"; the titles are none"));
}

TEST(Perform, ReachesTheControllerThatIsShownWhileNothingIsEdited) {
  InputApp app;
  EXPECT_EQ(app.command(R"({"do":"perform","action":"answer:"})"), ok);
  EXPECT_EQ(app.command("terminate"), ok);
  EXPECT_EQ(app.rest(), (Lines{"answered, without sender", "will terminate"}));
  EXPECT_EQ(app.inputs(), Lines{R"({"action":"answer:","event":"perform"})"});
}

TEST(Perform, GoesUpTheChainFromTheFirstResponder) {
  InputApp app;
  app.edit();
  EXPECT_EQ(app.command(R"({"do":"perform","action":"answer:"})"), ok);
  EXPECT_EQ(app.until("answered, without sender"), Lines{"answered, without sender"});
  EXPECT_EQ(app.command(R"({"do":"perform","action":"deleteBackward"})"), ok) << "the field's own";
}

TEST(Perform, OfAnActionThatNobodyAnswersIsRefused) {
  InputApp app;
  EXPECT_EQ(app.command(R"({"do":"perform","action":"nothing:"})"), refusal("nobody answers \"nothing:\""));
  EXPECT_EQ(app.command(R"({"do":"perform","action":"forbidden:"})"), refusal("nobody answers \"forbidden:\""));
  EXPECT_EQ(app.command(R"({"do":"perform","action":" "})"), refusal("nobody answers \" \""));
  EXPECT_EQ(app.command("perform"), refusal("\"action\" is missing"));
  EXPECT_EQ(app.inputs(), Lines{});
}

TEST(Type, WritesKeyByKeyIntoTheFirstResponder) {
  InputApp app;
  app.edit();
  EXPECT_EQ(app.command(R"({"do":"type","text":"aé"})"), ok);
  EXPECT_EQ(app.until("text \"aé\""), (Lines{"text \"a\"", "text \"aé\""}));
  EXPECT_EQ(app.inputs().back(), R"({"event":"type","text":"aé"})");
}

TEST(Type, AReturnEndsTheLineAndWhatComesAfterItHasNoPlace) {
  InputApp app;
  app.edit();
  EXPECT_EQ(app.command(R"({"do":"type","text":"a\nb"})"),
            refusal("after 2 characters nothing is being edited: there is no first responder"));
  EXPECT_EQ(app.until("editing ends with \"a\""), (Lines{"text \"a\"", "editing ends with \"a\""}));
}

TEST(Type, WithoutAFirstResponderIsRefused) {
  InputApp app;
  EXPECT_EQ(app.command(R"({"do":"type","text":"a"})"),
            refusal("nothing is being edited: there is no first responder"));
  EXPECT_EQ(app.command("type"), refusal("\"text\" is missing"));
}

TEST(Dictate, TellsOfTheInputModeAndWritesTheTextAtOnce) {
  InputApp app;
  app.edit();
  EXPECT_EQ(app.command(R"({"do":"dictate","text":"two words"})"), ok);
  EXPECT_EQ(app.until("text \"two words\""),
            (Lines{"input mode dictation, identifier dictation", "text \"two words\""}));
  EXPECT_EQ(app.command("keyboard"), ok);
  EXPECT_EQ(app.until("input mode en-US, identifier en_US@sw=QWERTY;hw=Automatic").size(), 1u);
  EXPECT_EQ(app.inputs(), (Lines{R"({"event":"touch","view":"UITextField","x":50.0,"y":410.0})",
                                 R"({"allowed":false,"event":"keyboardExtensions"})", R"({"event":"dictationBegan"})",
                                 R"({"event":"dictated","text":"two words"})", R"({"event":"keyboard"})"}));
}

TEST(Dictate, WhenTheKeyboardIsDismissedForItWritesNothing) {
  InputApp app({"INPUT_DO=dismiss"});
  app.edit();
  EXPECT_EQ(app.command(R"({"do":"type","text":"a"})"), ok);
  EXPECT_EQ(app.command(R"({"do":"dictate","text":"words"})"), refusal("dictation was dismissed"));
  EXPECT_EQ(app.until("input mode en-US, identifier en_US@sw=QWERTY;hw=Automatic"),
            (Lines{"text \"a\"", "input mode dictation, identifier dictation", "editing ends with \"a\"",
                   "dismissed: yes", "input mode en-US, identifier en_US@sw=QWERTY;hw=Automatic"}));
  EXPECT_EQ(app.command(R"({"do":"type","text":"b"})"),
            refusal("nothing is being edited: there is no first responder"));
  const Lines inputs = app.inputs();
  EXPECT_EQ(Lines(inputs.end() - 3, inputs.end()),
            (Lines{R"({"event":"dictationBegan"})", R"({"event":"dictationDismissed"})", R"({"event":"keyboard"})"}));
}

TEST(Dictate, EndsWithTheEditing) {
  InputApp app;
  app.edit();
  EXPECT_EQ(app.command(R"({"do":"dictate","text":"words"})"), ok);
  EXPECT_EQ(app.command(R"({"do":"type","text":"\n"})"), ok);
  EXPECT_EQ(app.until("editing ends with \"words\""),
            (Lines{"input mode dictation, identifier dictation", "text \"words\"",
                   "input mode en-US, identifier en_US@sw=QWERTY;hw=Automatic", "editing ends with \"words\""}));
}

TEST(Dictate, TwiceAddsToTheTextAndTellsOfTheModeOnce) {
  InputApp app;
  app.edit();
  EXPECT_EQ(app.command(R"({"do":"dictate","text":"one"})"), ok);
  EXPECT_EQ(app.command(R"({"do":"dictate","text":" two"})"), ok);
  EXPECT_EQ(app.until("text \"one two\""),
            (Lines{"input mode dictation, identifier dictation", "text \"one\"", "text \"one two\""}));
}

TEST(Dictate, WithoutAFirstResponderIsRefusedAndNobodyIsTold) {
  InputApp app;
  EXPECT_EQ(app.command(R"({"do":"dictate","text":"words"})"),
            refusal("nothing is being edited: there is no first responder"));
  EXPECT_EQ(app.inputs(), Lines{});
}

TEST(Keyboard, InItsNormalModeStaysThereAndNobodyIsTold) {
  InputApp app;
  EXPECT_EQ(app.command("keyboard"), ok);
  EXPECT_EQ(app.command(R"({"do":"keyboard","text":"a"})"),
            refusal("\"text\" is not among what this command takes (wish)"));
  EXPECT_EQ(app.inputs(), Lines{});
}

TEST(Keyboard, OfAnotherMakerIsNotAskedForBeforeSystem8) {
  InputApp app({R"(QVDEVICE_SETTINGS={"systemVersion":"7.1.2"})"});
  EXPECT_EQ(app.command(R"({"do":"touch","x":50,"y":410})"), ok);
  EXPECT_EQ(app.until("editing begins"),
            (Lines{"sendEvent: type 0, 1 touch, began", "sendEvent: type 0, 1 touch, ended", "editing begins"}));
}

} // namespace
