// Who asks for the application's delegate: the host's own code is shown its delegate, everybody else what is set. This
// test's executable is the host.
#import "Asking.h"
#include "Lifecycle.h"

#include <sys/mman.h>

#include <cstring>

namespace {

class DelegateRequest : public Lifecycle {
protected:
  void SetUp() override {
    Lifecycle::SetUp();
    host = make<QVFullHost>();
  }

  /// Puts the SDK's proxy around the delegate, as the SDK does after the launch.
  void putProxy() {
    proxy = [[[NSClassFromString(@"ZBAppDelegateProxy") alloc] initWithTarget:host] autorelease];
    [application setDelegate:proxy];
    support::clearLog();
  }

  QVFullHost *host = nil;
  id proxy = nil;
};

std::string original(id delegate) {
  return "3 -[UIApplication(Sandbox) sb_delegate] Returning original delegate " + shown(delegate);
}
std::string real(id delegate) {
  return "0 -[UIApplication(Sandbox) sb_delegate] Returning delegate " + shown(delegate);
}

id askThrough(UIApplication *application, int frames) {
  id const delegate = frames == 0 ? [application delegate] : askThrough(application, frames - 1);
  asm volatile("");
  return delegate;
}

/// Asks from code that was made while the app runs, and so belongs to no image.
class MadeCode {
public:
  MadeCode() : page_(::mmap(nullptr, kSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
    // Calls its third argument with its first two, and gives its result.
#if defined(__x86_64__)
    const unsigned char code[] = {0x48, 0x83, 0xec, 0x08, 0xff, 0xd2, 0x48, 0x83, 0xc4, 0x08, 0xc3};
#elif defined(__aarch64__)
    const unsigned int code[] = {0xa9bf7bfd, 0xd63f0040, 0xa8c17bfd, 0xd65f03c0};
#endif
    if (page_ == MAP_FAILED) return;
    std::memcpy(page_, code, sizeof code);
    ::mprotect(page_, kSize, PROT_READ | PROT_EXEC);
    __builtin___clear_cache(static_cast<char *>(page_), static_cast<char *>(page_) + sizeof code);
  }
  ~MadeCode() { ::munmap(page_, kSize); }
  MadeCode(const MadeCode &) = delete;
  MadeCode &operator=(const MadeCode &) = delete;

  id askForDelegateOf(UIApplication *application) const {
    using Call = id (*)(id, SEL, IMP);
    return reinterpret_cast<Call>(page_)(application, @selector(delegate),
                                         [application methodForSelector:@selector(delegate)]);
  }

private:
  static constexpr std::size_t kSize = 4096;
  void *page_;
};

} // namespace

TEST_F(DelegateRequest, FromTheHostsOwnCodeBehindTheProxyIsAnsweredWithTheOriginalDelegate) {
  launch(host);
  putProxy();
  EXPECT_EQ([application delegate], host);
  EXPECT_EQ([[UIApplication sharedApplication] delegate], host);
  EXPECT_EQ(support::log(), (Lines{original(host), original(host)}));
}

TEST_F(DelegateRequest, FromADynamicLibraryOfTheAppsIsAnsweredWithTheProxy) {
  launch(host);
  putProxy();
  EXPECT_EQ(QVAskForDelegate(application), proxy);
  EXPECT_EQ(support::log(), (Lines{real(proxy)}));
}

TEST_F(DelegateRequest, FromAPlatformFrameworkIsAnsweredWithTheProxyThoughTheHostMadeItAsk) {
  launch(host);
  putProxy();
  EXPECT_EQ([application valueForKey:@"delegate"], proxy);
  EXPECT_EQ([[@[ application ] valueForKey:@"delegate"] firstObject], proxy);
  EXPECT_EQ(support::log(), (Lines{real(proxy), real(proxy)}));
}

TEST_F(DelegateRequest, FromCodeThatLiesInNoImageIsAnsweredWithTheProxy) {
  launch(host);
  putProxy();
  EXPECT_EQ(MadeCode().askForDelegateOf(application), proxy);
  EXPECT_EQ(support::log(), (Lines{real(proxy)}));
}

TEST_F(DelegateRequest, FromDeepInTheHostsOwnCodeIsAnsweredWithTheOriginalDelegate) {
  launch(host);
  putProxy();
  EXPECT_EQ(askThrough(application, 1000), host);
}

TEST_F(DelegateRequest, BehindTheProxyWithoutAnOriginalDelegateIsAnsweredWithTheProxy) {
  launch(host);
  putProxy();
  [ZorbelDelegate() setOriginalDelegate:nil];
  EXPECT_EQ([application delegate], proxy);
  EXPECT_EQ(support::log(), (Lines{real(proxy)}));
}

TEST_F(DelegateRequest, BehindTheProxyBeforeTheLaunchIsAnsweredWithTheProxy) {
  putProxy();
  EXPECT_EQ([application delegate], proxy);
  EXPECT_EQ(support::log(), (Lines{real(proxy)}));
}

TEST_F(DelegateRequest, WithoutTheProxyIsAnsweredWithWhatIsSetWhoeverAsks) {
  launch(host);
  QVEmptyHost *const another = make<QVEmptyHost>();
  [application setDelegate:another]; // only forwarded to
  support::clearLog();
  EXPECT_EQ([application delegate], host);
  EXPECT_EQ(QVAskForDelegate(application), host);
  EXPECT_EQ(support::log(), (Lines{real(host), real(host)}));
}

TEST_F(DelegateRequest, AfterTheHostReplacedItsDelegateBehindTheProxyIsAnsweredWithTheNewOne) {
  launch(host);
  putProxy();
  QVEmptyHost *const another = make<QVEmptyHost>();
  [application setDelegate:another];
  support::clearLog();
  EXPECT_EQ([application delegate], another);
  EXPECT_EQ(QVAskForDelegate(application), proxy);
  EXPECT_EQ(support::log(), (Lines{original(another), real(proxy)}));
}

TEST_F(DelegateRequest, ForADelegateThatOnlyClaimsToBeTheProxyIsAnsweredWithIt) {
  launch(host);
  putProxy();
  QVHostProxy *const liar = [[[QVHostProxy alloc] initWithTarget:proxy] autorelease];
  [application _setDelegate:liar assumeOwnership:NO];
  support::clearLog();
  EXPECT_EQ([application delegate], liar);
  EXPECT_EQ(support::log(), (Lines{real(liar)}));
}

TEST_F(DelegateRequest, WithoutADelegateIsAnsweredWithNil) {
  EXPECT_EQ([application delegate], nil);
  EXPECT_EQ(support::log(), (Lines{real(nil)}));
}

TEST_F(DelegateRequest, LeavesNothingBehindForEachFrameOfTheStack) {
  launch(host);
  putProxy();
  // What a request autoreleases may not grow with the stack that it is made from.
  const auto leftBy = [&](int frames) {
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    askThrough(application, frames);
    const unsigned count = [pool autoreleaseCount];
    [pool drain];
    return count;
  };
  EXPECT_EQ(leftBy(300), leftBy(1));
}
