#import "UIKitTest.h"

@interface FieldDelegate : NSObject <UITextFieldDelegate> {
@public
  BOOL refusesToBegin;
  BOOL refusesToEnd;
  BOOL refusesChanges;
  BOOL refusesReturn;
}
@end

@implementation FieldDelegate
- (BOOL)textFieldShouldBeginEditing:(UITextField *)field {
  (void)field;
  notes->push_back("should begin");
  return !refusesToBegin;
}
- (void)textFieldDidBeginEditing:(UITextField *)field {
  (void)field;
  notes->push_back("did begin");
}
- (BOOL)textFieldShouldEndEditing:(UITextField *)field {
  (void)field;
  notes->push_back("should end");
  return !refusesToEnd;
}
- (void)textFieldDidEndEditing:(UITextField *)field {
  (void)field;
  notes->push_back("did end");
}
- (BOOL)textField:(UITextField *)field
    shouldChangeCharactersInRange:(NSRange)range
                replacementString:(NSString *)string {
  (void)field;
  notes->push_back("change " + std::to_string(range.location) + "+" + std::to_string(range.length) + " to \"" +
                   [string UTF8String] + "\"");
  return !refusesChanges;
}
- (BOOL)textFieldShouldReturn:(UITextField *)field {
  (void)field;
  notes->push_back("should return");
  return !refusesReturn;
}
@end

@interface FieldWatcher : NSObject
@end

@implementation FieldWatcher
- (void)note:(NSNotification *)notification {
  notes->push_back([[notification name] UTF8String]);
}
- (void)began:(id)sender {
  (void)sender;
  notes->push_back("EditingDidBegin");
}
- (void)changed:(id)sender {
  (void)sender;
  notes->push_back("EditingChanged");
}
- (void)ended:(id)sender {
  (void)sender;
  notes->push_back("EditingDidEnd");
}
- (void)exited:(id)sender {
  (void)sender;
  notes->push_back("EditingDidEndOnExit");
}
@end

namespace {

class TextField : public UIKitTest {
protected:
  void SetUp() override {
    UIKitTest::SetUp();
    delegate = [[[FieldDelegate alloc] init] autorelease];
    watcher = [[[FieldWatcher alloc] init] autorelease];
    window = shownWindow();
    field = view<UITextField>(CGRectMake(0, 0, 100, 20), window);
    [field setDelegate:delegate];
    [field addTarget:watcher action:@selector(began:) forControlEvents:UIControlEventEditingDidBegin];
    [field addTarget:watcher action:@selector(changed:) forControlEvents:UIControlEventEditingChanged];
    [field addTarget:watcher action:@selector(ended:) forControlEvents:UIControlEventEditingDidEnd];
    [field addTarget:watcher action:@selector(exited:) forControlEvents:UIControlEventEditingDidEndOnExit];
    for (NSString *name in @[
           UITextFieldTextDidBeginEditingNotification, UITextFieldTextDidEndEditingNotification,
           UITextFieldTextDidChangeNotification
         ])
      [[NSNotificationCenter defaultCenter] addObserver:watcher selector:@selector(note:) name:name object:field];
  }
  void TearDown() override {
    [[NSNotificationCenter defaultCenter] removeObserver:watcher];
    [field setDelegate:nil];
    [field removeFromSuperview];
    UIKitTest::TearDown();
  }

  FieldDelegate *delegate = nil;
  FieldWatcher *watcher = nil;
  UIWindow *window = nil;
  UITextField *field = nil;
};

TEST_F(TextField, EditingBeginsAndEndsWithItsDelegateAndItsWatchersTold) {
  EXPECT_TRUE([field becomeFirstResponder]);
  EXPECT_TRUE([field isEditing]);
  EXPECT_EQ(written,
            (Notes{"should begin", "did begin", "EditingDidBegin", "UITextFieldTextDidBeginEditingNotification"}));
  written.clear();
  EXPECT_TRUE([field resignFirstResponder]);
  EXPECT_FALSE([field isEditing]);
  EXPECT_EQ(written, (Notes{"should end", "did end", "EditingDidEnd", "UITextFieldTextDidEndEditingNotification"}));
}

TEST_F(TextField, ItsDelegateMayRefuseToBeginAndToEnd) {
  delegate->refusesToBegin = YES;
  EXPECT_FALSE([field becomeFirstResponder]);
  EXPECT_EQ(written, Notes{"should begin"});
  delegate->refusesToBegin = NO;
  ASSERT_TRUE([field becomeFirstResponder]);
  delegate->refusesToEnd = YES;
  written.clear();
  EXPECT_FALSE([window endEditing:NO]);
  EXPECT_EQ(written, Notes{"should end"});
  written.clear();
  EXPECT_TRUE([window endEditing:YES]);
  EXPECT_EQ(written, (Notes{"should end", "did end", "EditingDidEnd", "UITextFieldTextDidEndEditingNotification"}));
}

TEST_F(TextField, ADisabledOneIsNotEdited) {
  [field setEnabled:NO];
  EXPECT_FALSE([field becomeFirstResponder]);
}

TEST_F(TextField, WhatIsTypedIsAddedAtTheEndWhenItsDelegateAgrees) {
  [field setText:@"ab"];
  EXPECT_EQ(written, Notes{}) << "the app itself need not be told";
  [field insertText:@"c"];
  EXPECT_EQ(text([field text]), "abc");
  EXPECT_EQ(written, (Notes{"change 2+0 to \"c\"", "EditingChanged", "UITextFieldTextDidChangeNotification"}));
  written.clear();
  delegate->refusesChanges = YES;
  [field insertText:@"d"];
  [field deleteBackward];
  EXPECT_EQ(text([field text]), "abc");
  EXPECT_EQ(written, (Notes{"change 3+0 to \"d\"", "change 2+1 to \"\""}));
}

TEST_F(TextField, DeletingTakesAWholeCharacter) {
  [field setText:@"e\u0301"];
  EXPECT_TRUE([field hasText]);
  [field deleteBackward];
  EXPECT_EQ(text([field text]), "");
  EXPECT_FALSE([field hasText]);
  written.clear();
  [field deleteBackward];
  EXPECT_EQ(written, Notes{});
}

TEST_F(TextField, ReturnEndsOnExitUnlessItsDelegateKeepsIt) {
  [field insertText:@"\n"];
  EXPECT_EQ(written, (Notes{"should return", "EditingDidEndOnExit"}));
  written.clear();
  delegate->refusesReturn = YES;
  [field insertText:@"\n"];
  EXPECT_EQ(written, Notes{"should return"});
  EXPECT_EQ(text([field text]), "");
}

TEST_F(TextField, WithoutADelegateEverythingIsAllowed) {
  [field setDelegate:nil];
  EXPECT_TRUE([field becomeFirstResponder]);
  [field insertText:@"a"];
  [field insertText:@"\n"];
  EXPECT_TRUE([field resignFirstResponder]);
  EXPECT_EQ(text([field text]), "a");
}

TEST_F(TextField, ItsTextIsNeverNil) {
  EXPECT_EQ(text([field text]), "");
  [field setText:nil];
  EXPECT_EQ(text([field text]), "");
}

} // namespace
