// A host of extensions: this process. What it is called back with is noted in order.
#pragma once

#import <Foundation/NSExtension.h>
#import <UIKit/UIKit.h>

#include <signal.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#import "Pooled.h"

using Notes = std::vector<std::string>;

class Hosted : public Pooled {
protected:
  void TearDown() override {
    drop();
    Pooled::TearDown();
  }

  // Makes a request of the extension that says what it shall do.
  void ask(NSString *what, NSDictionary *more = @{}, NSString *name = @"behaving") {
    NSExtensionItem *const item = [[[NSExtensionItem alloc] init] autorelease];
    NSMutableDictionary *const information = [NSMutableDictionary dictionaryWithDictionary:more];
    [information setObject:what forKey:@"do"];
    [item setUserInfo:information];
    askWith(@[ item ], name);
  }

  void askWith(NSArray *items, NSString *name = @"behaving") {
    // What was given to this scope to release goes with it, and not with the test.
    NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
    NSError *error = nil;
    extension = [[NSExtension extensionWithIdentifier:[@"com.example.trial." stringByAppendingString:name]
                                                error:&error] retain];
    ASSERT_NE(extension, nil) << text(error);
    [extension setRequestInterruptionBlock:^(id<NSCopying>) {
      note("interrupted");
    }];
    [extension setRequestCancellationBlock:^(id, NSError *why) {
      note("cancelled " + text([why domain]) + " " + std::to_string([why code]) + " " +
           text([why localizedDescription]));
    }];
    [extension setRequestCompletionBlock:^(id, NSArray *returned) {
      note("completed", returned);
    }];
    [extension instantiateViewControllerWithInputItems:items connectionHandler:^(id<NSCopying> identifier,
                                                                                 UIViewController *view, NSError *why) {
      const std::lock_guard locked(lock);
      request = [(id)identifier retain];
      controller = [view retain];
      onMainThread.push_back([NSThread isMainThread]);
      notes.push_back(view ? "shown" : "failed " + text([why domain]) + " " + std::to_string([why code]));
      reason = text([why localizedDescription]);
    }];
    [inner drain];
  }

  void note(const std::string &what, NSArray *items = nil) {
    const std::lock_guard locked(lock);
    notes.push_back(what);
    onMainThread.push_back([NSThread isMainThread]);
    if (items) returnedItems = [items retain];
  }

  Notes noted() {
    const std::lock_guard locked(lock);
    return notes;
  }

  // Runs the main thread's loop until that is so; false when it never is.
  static bool runUntil(const std::function<bool()> &done, int milliseconds = 20000) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (!done()) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
      [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.005]];
      [inner drain];
    }
    return true;
  }

  bool runUntilNoted(std::size_t count) {
    return runUntil([this, count] { return noted().size() >= count; });
  }

  // Whatever may still come has time to.
  static void runForAWhile() {
    runUntil([] { return false; }, 300);
  }

  int process() { return [extension pidForRequestIdentifier:request]; }

  static bool isThere(int process) { return ::kill(process, 0) == 0 || errno != ESRCH; }

  static bool runUntilGone(int process) {
    return runUntil([process] { return !isThere(process); });
  }

  // Gives up all that was had of the request.
  void drop() {
    [controller release];
    [extension release];
    [request release];
    [returnedItems release];
    controller = nil;
    extension = nil;
    request = nil;
    returnedItems = nil;
  }

  static std::size_t count(const char *folder) {
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
  }

  NSExtension *extension = nil;
  UIViewController *controller = nil;
  id request = nil;
  NSArray *returnedItems = nil;
  std::string reason;
  std::vector<bool> onMainThread;

private:
  std::mutex lock;
  Notes notes;
};
