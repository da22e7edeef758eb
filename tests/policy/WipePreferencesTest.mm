#include "Wipe.h"

#include <objc/runtime.h>

namespace {

std::vector<std::string> removed;

void noteRemoval(id, SEL, NSString *name) { removed.push_back([name UTF8String]); }
NSArray *threeNames(id, SEL) { return @[ @"third", @"first", @"second" ]; }
NSArray *noNames(id, SEL) { return nil; }

void replace(SEL selector, IMP implementation) {
  method_setImplementation(class_getInstanceMethod([NSUserDefaults class], selector), implementation);
}

} // namespace

TEST_F(Wipe, RemovesEveryPersistentDomainForGoodAndLogsNothing) {
  NSUserDefaults *const defaults = [NSUserDefaults standardUserDefaults];
  [defaults setObject:@"blue" forKey:@"colour"];
  [defaults setPersistentDomain:@{@"depth" : @3} forName:@"com.example.extra"];
  [defaults synchronize];
  ASSERT_EQ([[defaults persistentDomainNames] count], 2u);
  ASSERT_TRUE(wipe::exists(wipe::home("Library/Preferences/com.example.extra.plist")));
  [wipe::util() _cleanUpPreferences];
  EXPECT_EQ(wipe::log(), (std::vector<std::string>{}));
  EXPECT_EQ([[defaults persistentDomainNames] count], 0u);
  EXPECT_EQ([defaults objectForKey:@"colour"], nil);
  [defaults synchronize];
  EXPECT_FALSE(wipe::exists(wipe::home("Library/Preferences/com.example.extra.plist")));
  [wipe::util() _cleanUpPreferences];
}

TEST_F(Wipe, RemovesTheDomainsInTheOrderInWhichTheyAreListed) {
  removed.clear();
  replace(@selector(persistentDomainNames), (IMP)threeNames);
  replace(@selector(removePersistentDomainForName:), (IMP)noteRemoval);
  [wipe::util() _cleanUpPreferences];
  EXPECT_EQ(removed, (std::vector<std::string>{"third", "first", "second"}));
}

TEST_F(Wipe, RemovesNoDomainWhenThereIsNoList) {
  removed.clear();
  replace(@selector(persistentDomainNames), (IMP)noNames);
  replace(@selector(removePersistentDomainForName:), (IMP)noteRemoval);
  [wipe::util() _cleanUpPreferences];
  EXPECT_EQ(removed, (std::vector<std::string>{}));
}
