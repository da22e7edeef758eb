// What the host of an extension demands of its arguments, and who hears of it.
#include "ExtensionTest.h"

#include <cstdarg>
#include <objc/runtime.h>

namespace {

const std::string kMethod = "initWithExtensionIdentifier:inputItems:completionHandler: of "
                            "QVSBApplicationExtensionViewController at ";
const std::string kFile = "QVSandbox/QVSandbox/Extension/QVSBApplicationExtensionViewController";
const std::string kIdentifier = ":48: Invalid parameter not satisfying: identifier != nil";
const std::string kItems = ":49: Invalid parameter not satisfying: inputItems.count > 0";
const std::string kHandler = ":50: Invalid parameter not satisfying: completionHandler != NULL";

void noteFailure(id, SEL, SEL method, id object, NSString *file, NSInteger line, NSString *format, ...) {
  va_list arguments;
  va_start(arguments, format);
  NSString *const text = [[[NSString alloc] initWithFormat:format arguments:arguments] autorelease];
  va_end(arguments);
  note(std::string(sel_getName(method)) + " of " + object_getClassName(object) + " at " + support::text(file) + ":" +
       std::to_string(line) + ": " + support::text(text));
}

/// An assertion handler that notes what it hears and does not raise. Made at run time: the platform's declaration says
/// that the method does not return.
id lenientHandler() {
  static Class cls = Nil;
  if (!cls) {
    cls = objc_allocateClassPair([NSAssertionHandler class], "QVTestAssertionHandler", 0);
    class_addMethod(cls, @selector(handleFailureInMethod:object:file:lineNumber:description:),
                    reinterpret_cast<IMP>(&noteFailure), "v56@0:8:16@24@32q40@48");
    objc_registerClassPair(cls);
  }
  return [[[cls alloc] init] autorelease];
}

id unreadablePath(id, SEL, const char *) { return nil; }

id (*initWithNib)(id, SEL, id, id) = nullptr;
id noteNib(id self, SEL selector, id name, id bundle) {
  note(std::string("initWithNibName:") + (name ? "?" : "nil") + " bundle:" + (bundle ? "?" : "nil"));
  return initWithNib(self, selector, name, bundle);
}

class HostArguments : public ExtensionTest {
protected:
  void SetUp() override {
    ExtensionTest::SetUp();
    initWithNib = reinterpret_cast<decltype(initWithNib)>(
        class_getMethodImplementation([UIViewController class], @selector(initWithNibName:bundle:)));
    replaceMethod([UIViewController class], "initWithNibName:bundle:", reinterpret_cast<IMP>(&noteNib));
  }

  static UIViewController<QVExtensionHost> *make(NSString *identifier, NSArray *items, CompletionHandler handler) {
    return [[(id<QVExtensionHost>)[hostClass() alloc] initWithExtensionIdentifier:identifier inputItems:items
                                                                completionHandler:handler] autorelease];
  }

  /// Makes one with an assertion handler that lets everything pass.
  static UIViewController<QVExtensionHost> *makeUnderALenientHandler(NSString *identifier, NSArray *items,
                                                                     CompletionHandler handler) {
    NSMutableDictionary *const thread = [[NSThread currentThread] threadDictionary];
    [thread setObject:lenientHandler() forKey:NSAssertionHandlerKey];
    UIViewController<QVExtensionHost> *const made = make(identifier, items, handler);
    [thread removeObjectForKey:NSAssertionHandlerKey];
    return made;
  }

  NSArray *const items_ = [[NSArray alloc] initWithObjects:@"item", nil];
  CompletionHandler const handler_ = ^(BOOL, NSArray *, NSError *) {
  };
};

} // namespace

TEST_F(HostArguments, ThatAreThereAreKeptTheHandlerAsACopy) {
  NSString *const identifier = [NSMutableString stringWithString:@"com.example.manager.passcode"];
  int calls = 0;
  int *const counter = &calls;
  // On the stack, as it has a variable of this scope's.
  CompletionHandler const given = ^(BOOL, NSArray *, NSError *) {
    ++*counter;
  };
  UIViewController<QVExtensionHost> *const host = make(identifier, items_, given);
  EXPECT_EQ(take(), Lines{"initWithNibName:nil bundle:nil"});
  EXPECT_EQ([host identifier], identifier);
  EXPECT_EQ([host inputItems], items_);
  EXPECT_EQ([host extension], nil);
  ASSERT_NE([host handler], nullptr);
  EXPECT_NE((void *)[host handler], (void *)given);
  [host handler](NO, nil, nil);
  EXPECT_EQ(calls, 1);
}

TEST_F(HostArguments, WithoutAnIdentifierRaiseByDefaultBeforeTheSuperclassIsInitialised) {
  const std::string raised = raisedBy([&] { make(nil, items_, handler_); });
  EXPECT_TRUE(raised.starts_with("NSInternalInconsistencyException: ")) << raised;
  EXPECT_TRUE(raised.ends_with("Invalid parameter not satisfying: identifier != nil")) << raised;
  EXPECT_NE(raised.find(kFile + ":48"), std::string::npos) << raised;
  EXPECT_EQ(take(), Lines{});
}

TEST_F(HostArguments, WithoutInputItemsRaiseByDefault) {
  for (NSArray *none : {(NSArray *)nil, [NSArray array]}) {
    const std::string raised = raisedBy([&] { make(@"id", none, handler_); });
    EXPECT_TRUE(raised.ends_with("Invalid parameter not satisfying: inputItems.count > 0")) << raised;
    EXPECT_NE(raised.find(kFile + ":49"), std::string::npos) << raised;
  }
  EXPECT_EQ(take(), Lines{});
}

TEST_F(HostArguments, WithoutAHandlerRaiseByDefault) {
  const std::string raised = raisedBy([&] { make(@"id", items_, nil); });
  EXPECT_TRUE(raised.ends_with("Invalid parameter not satisfying: completionHandler != NULL")) << raised;
  EXPECT_NE(raised.find(kFile + ":50"), std::string::npos) << raised;
  EXPECT_EQ(take(), Lines{});
}

TEST_F(HostArguments, AreJudgedInOrderByTheHandlerOfTheThreadAndBeforeTheSuperclassIsInitialised) {
  UIViewController<QVExtensionHost> *const host = makeUnderALenientHandler(nil, nil, nil);
  EXPECT_EQ(take(), (Lines{kMethod + kFile + kIdentifier, kMethod + kFile + kItems, kMethod + kFile + kHandler,
                           "initWithNibName:nil bundle:nil"}));
  ASSERT_NE(host, nil);
  EXPECT_EQ([host identifier], nil);
  EXPECT_EQ([host inputItems], nil);
  EXPECT_EQ([host handler], nullptr);
}

TEST_F(HostArguments, OfWhichOneIsMissingAreNamedAlone) {
  makeUnderALenientHandler(@"id", [NSArray array], handler_);
  EXPECT_EQ(take(), (Lines{kMethod + kFile + kItems, "initWithNibName:nil bundle:nil"}));
  makeUnderALenientHandler(@"id", items_, handler_);
  EXPECT_EQ(take(), Lines{"initWithNibName:nil bundle:nil"});
}

TEST_F(HostArguments, AreNamedWithAnUnknownFileWhereThePathCannotBeMadeIntoAString) {
  const Method method = class_getClassMethod([NSString class], @selector(stringWithUTF8String:));
  IMP const before = method_setImplementation(method, reinterpret_cast<IMP>(&unreadablePath));
  makeUnderALenientHandler(nil, items_, handler_);
  method_setImplementation(method, before);
  EXPECT_EQ(take().front(), kMethod + "<Unknown File>" + kIdentifier);
}

TEST_F(HostArguments, ThatAHandlerLetPassEndInNoCallOfNobody) {
  UIViewController<QVExtensionHost> *const host = makeUnderALenientHandler(nil, items_, nil);
  take();
  [host viewWillAppear:NO];
  EXPECT_EQ(take().front(), "look for (nil)");
}
