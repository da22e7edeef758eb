// A folder in the container for each test, and the file system's own view of what stands in it.
#pragma once

#import <Foundation/Foundation.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <optional>
#include <string>

inline std::string text(NSString *string) { return string ? [string UTF8String] : "(nil)"; }

inline NSData *dataOf(const std::string &bytes) { return [NSData dataWithBytes:bytes.data() length:bytes.size()]; }

class Files : public ::testing::Test {
protected:
  void SetUp() override {
    pool_ = [[NSAutoreleasePool alloc] init];
    folder_ = [[NSTemporaryDirectory() stringByAppendingPathComponent:[[NSUUID UUID] UUIDString]] retain];
    ASSERT_EQ(mkdir([folder_ UTF8String], 0755), 0);
  }

  void TearDown() override {
    [[NSFileManager defaultManager] removeItemAtPath:folder_ error:NULL];
    [folder_ release];
    [pool_ drain];
  }

  NSString *path(NSString *name) const { return [folder_ stringByAppendingPathComponent:name]; }
  NSURL *url(NSString *name) const { return [NSURL fileURLWithPath:path(name)]; }
  NSFileManager *manager() const { return [NSFileManager defaultManager]; }

  // What stands in the item's extended attribute.
  std::optional<std::string> stored(NSString *name) const {
    char bytes[128];
    const ssize_t length = getxattr([path(name) UTF8String], "user.qv.protection", bytes, sizeof bytes);
    return length < 0 ? std::nullopt : std::optional(std::string(bytes, static_cast<size_t>(length)));
  }

  void store(NSString *name, const std::string &value) const {
    ASSERT_EQ(setxattr([path(name) UTF8String], "user.qv.protection", value.data(), value.size(), 0), 0);
  }

  void make(NSString *name, const std::string &contents = "old") const {
    FILE *const file = fopen([path(name) UTF8String], "w");
    ASSERT_NE(file, nullptr);
    fwrite(contents.data(), 1, contents.size(), file);
    fclose(file);
  }

  std::string contents(NSString *name) const {
    NSData *const data = [NSData dataWithContentsOfFile:path(name)];
    return data ? std::string(static_cast<const char *>([data bytes]), [data length]) : "(missing)";
  }

  struct stat status(NSString *name) const {
    struct stat result = {};
    EXPECT_EQ(lstat([path(name) UTF8String], &result), 0);
    return result;
  }

  // Everything in the test's folder: a failed write leaves no litter.
  NSArray *names() const {
    return [[manager() contentsOfDirectoryAtPath:folder_ error:NULL] sortedArrayUsingSelector:@selector(compare:)];
  }

private:
  NSAutoreleasePool *pool_ = nil;
  NSString *folder_ = nil;
};

// What is written to standard error meanwhile. (GoogleTest's own capture wants a folder that is outside the container.)
template <class Work> std::string standardErrorOf(Work work) {
  NSString *const name = [NSTemporaryDirectory() stringByAppendingPathComponent:@"standard-error"];
  fflush(stderr);
  const int kept = dup(2);
  const int file = open([name UTF8String], O_RDWR | O_CREAT | O_TRUNC, 0600);
  dup2(file, 2);
  work();
  fflush(stderr);
  dup2(kept, 2);
  close(kept);
  close(file);
  NSData *const written = [NSData dataWithContentsOfFile:name];
  unlink([name UTF8String]);
  return std::string(static_cast<const char *>([written bytes]), [written length]);
}

inline void expectError(NSError *error, NSInteger code, NSString *path, int posix) {
  ASSERT_NE(error, nil);
  EXPECT_EQ(text([error domain]), "NSCocoaErrorDomain");
  EXPECT_EQ([error code], code);
  EXPECT_EQ(text([[error userInfo] objectForKey:@"NSFilePath"]), text(path));
  NSError *const under = [[error userInfo] objectForKey:NSUnderlyingErrorKey];
  EXPECT_EQ(text([under domain]), "NSPOSIXErrorDomain");
  EXPECT_EQ([under code], posix);
  EXPECT_GT([[error localizedDescription] length], 0u);
}
