// One app of a device, told by its arguments what to do, in order:
//   string TEXT        puts a text
//   types TYPE         puts one item of that type
//   add COUNT NAME     adds so many items, one at a time, each with two values, NAME and its number
//   set COUNT NAME     the same items in one write
//   read               says what the pasteboard holds: strings, else the number of items
//   count              says the change count
//   whole NAME...      says for each name how many whole items of that name there are
//   named TEXT         says what the pasteboard named "mine" held, and puts a text there
//   watch              says from now on what it is told of the pasteboard
//   active             becomes active
//   run WORD... end    does all that in another app of the device, and waits for it

#import <UIKit/UIKit.h>

#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <deque>
#include <string>
#include <vector>

namespace {

std::deque<std::string> words;

std::string next() {
  if (words.empty()) std::abort();
  std::string word = words.front();
  words.pop_front();
  return word;
}

NSString *nextText() { return [NSString stringWithUTF8String:next().c_str()]; }

void say(NSString *text) {
  std::printf("%s\n", [text UTF8String]);
  std::fflush(stdout);
}

NSDictionary *item(NSString *name, int number) {
  NSString *const text = [NSString stringWithFormat:@"%@ %d", name, number];
  return @{@"public.utf8-plain-text" : text, @"com.example.again" : text};
}

NSArray *itemsNamed(NSString *name, int count) {
  NSMutableArray *const items = [NSMutableArray array];
  for (int number = 0; number < count; ++number)
    [items addObject:item(name, number)];
  return items;
}

int wholeItems(NSString *name) {
  int whole = 0;
  for (NSDictionary *each in [[UIPasteboard generalPasteboard] items]) {
    NSString *const text = [each objectForKey:@"public.utf8-plain-text"];
    if ([text hasPrefix:[name stringByAppendingString:@" "]] && [text isEqual:[each objectForKey:@"com.example.again"]])
      ++whole;
  }
  return whole;
}

void runAnother() {
  std::vector<std::string> command{"pasteboard_peer"};
  for (std::string word = next(); word != "end"; word = next())
    command.push_back(word);
  std::string container = std::string(std::getenv("QVDEVICE_CONTAINER")) + "/tmp/other";
  ::mkdir(container.c_str(), 0755);
  const std::string before = std::getenv("QVDEVICE_CONTAINER");
  ::setenv("QVDEVICE_CONTAINER", container.c_str(), 1);
  std::vector<char *> arguments;
  for (std::string &word : command)
    arguments.push_back(word.data());
  arguments.push_back(nullptr);
  pid_t child = 0;
  if (::posix_spawn(&child, "/proc/self/exe", nullptr, nullptr, arguments.data(), environ) != 0) std::abort();
  int status = 0;
  ::waitpid(child, &status, 0);
  ::setenv("QVDEVICE_CONTAINER", before.c_str(), 1);
  if (status != 0) std::abort();
}

NSString *sorted(NSArray *types) {
  return [[types sortedArrayUsingSelector:@selector(compare:)] componentsJoinedByString:@" "];
}

} // namespace

@interface PeerWatcher : NSObject
@end

@implementation PeerWatcher
- (void)changed:(NSNotification *)notification {
  say([NSString stringWithFormat:@"changed, came: %@, went: %@",
                                 sorted([[notification userInfo] objectForKey:UIPasteboardChangedTypesAddedKey]),
                                 sorted([[notification userInfo] objectForKey:UIPasteboardChangedTypesRemovedKey])]);
}
@end

namespace {

void obey(const std::string &word) {
  UIPasteboard *const general = [UIPasteboard generalPasteboard];
  if (word == "string") {
    [general setString:nextText()];
  } else if (word == "types") {
    [general setItems:@[ @{nextText() : @"value"} ]];
  } else if (word == "add") {
    const int count = std::stoi(next());
    NSString *const name = nextText();
    for (int number = 0; number < count; ++number)
      [general addItems:@[ item(name, number) ]];
  } else if (word == "set") {
    const int count = std::stoi(next());
    [general setItems:itemsNamed(nextText(), count)];
  } else if (word == "read") {
    NSArray *const strings = [general strings];
    say(strings ? [strings componentsJoinedByString:@", "]
                : [NSString stringWithFormat:@"%ld items", (long)[general numberOfItems]]);
  } else if (word == "count") {
    say([NSString stringWithFormat:@"change %ld", (long)[general changeCount]]);
  } else if (word == "whole") {
    NSString *const name = nextText();
    say([NSString stringWithFormat:@"%d whole %@", wholeItems(name), name]);
  } else if (word == "named") {
    UIPasteboard *const mine = [UIPasteboard pasteboardWithName:@"mine" create:YES];
    say([mine string] ? [mine string] : @"nothing");
    [mine setString:nextText()];
  } else if (word == "watch") {
    [[NSNotificationCenter defaultCenter] addObserver:[[PeerWatcher alloc] init] selector:@selector(changed:)
                                                 name:UIPasteboardChangedNotification
                                               object:general];
  } else if (word == "active") {
    [[NSNotificationCenter defaultCenter] postNotificationName:UIApplicationDidBecomeActiveNotification object:nil];
  } else if (word == "run") {
    runAnother();
  } else {
    std::abort();
  }
}

} // namespace

int main(int argc, char **argv) {
  words.assign(argv + 1, argv + argc);
  while (!words.empty()) {
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    obey(next());
    [pool release];
  }
  return 0;
}
