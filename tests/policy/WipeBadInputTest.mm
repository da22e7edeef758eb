// File trees that resist.
#include "Wipe.h"

#include <objc/runtime.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>

#include <atomic>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <thread>

namespace {

using Lines = std::vector<std::string>;
const Lines emptied = {"Documents", "Library", "tmp"};

void cleanUp() { [wipe::util() _cleanUpFileSystem]; }

using Remove = BOOL (*)(id, SEL, NSString *, NSError **);
Remove removeItem;
void (*beforeRemoval)(const std::string &path);

BOOL removeAfterSomething(id self, SEL selector, NSString *path, NSError **error) {
  beforeRemoval([path UTF8String]);
  return removeItem(self, selector, path, error);
}

void beforeEachRemoval(void (*work)(const std::string &path)) {
  beforeRemoval = work;
  const Method method = class_getInstanceMethod([NSFileManager class], @selector(removeItemAtPath:error:));
  removeItem = (Remove)method_setImplementation(method, (IMP)removeAfterSomething);
}

BOOL removeUnlessStubborn(id self, SEL selector, NSString *path, NSError **error) {
  return [[path lastPathComponent] isEqual:@"stubborn"] ? NO : removeItem(self, selector, path, error);
}

void refuseToRemoveWhatIsStubborn() {
  const Method method = class_getInstanceMethod([NSFileManager class], @selector(removeItemAtPath:error:));
  removeItem = (Remove)method_setImplementation(method, (IMP)removeUnlessStubborn);
}

} // namespace

TEST_F(Wipe, RemovesItemsWhoseNamesAreAnyBytes) {
  std::string all;
  for (int byte = 1; byte < 256; ++byte) {
    if (byte != '/') all += static_cast<char>(byte);
  }
  for (const std::string &folder : {std::string("Documents/"), std::string("Library/\xff folder/"), std::string()}) {
    for (const std::string &name :
         {all.substr(0, 127), all.substr(127), std::string("back\\slash"), std::string("~"), std::string("~root"),
          std::string("%@%n%s"), std::string("line\nline"), std::string(" "), std::string("..."), std::string("a:b"),
          std::string("e\xcc\x81"), std::string("\xc3\xa9"), std::string("\xed\xa0\x80"), std::string("\xc0\xaf"),
          std::string("\xf5\x80\x80\x80"), std::string("cut \xe2\x82"), std::string(255, 'x'),
          std::string(255, '\xfe')}) {
      wipe::makeFile(folder + name);
    }
  }
  wipe::makeFile("Documents/back\\slash.d/x\\y/z");
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home()), emptied);
  EXPECT_EQ(wipe::log(0), Lines{});
}

TEST_F(Wipe, RemovesLinksAndLeavesWhatTheyLeadTo) {
  wipe::makeFile("Documents/target/file");
  wipe::makeLink("Documents/to a sibling", "target");
  wipe::makeLink("Documents/to the root", "/");
  wipe::makeLink("Documents/to nowhere", "no such item");
  wipe::makeLink("Documents/to itself", "to itself");
  wipe::makeLink("Documents/upwards", "..");
  wipe::makeLink("Extra", "/etc");
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home()), emptied);
  // The device lets nothing outside be removed: an attempt would be a line.
  EXPECT_EQ(wipe::log(0), Lines{});
  for (const std::string &line : wipe::log())
    EXPECT_EQ(line.find("to the root/"), std::string::npos) << line;
}

TEST_F(Wipe, RemovesALinkToNowhereBesideARemovedItemWhoseNameItsOwnBeginsWith) {
  // Whichever the file system lists first, some name follows one that it begins with.
  for (const char *name : {"a", "ab", "abc", "abcd", "abcde", "abcdef"})
    wipe::makeLink(std::string("Documents/") + name, "no such item");
  wipe::makeFile("tmp/a/file");
  for (const char *name : {"aa", "a b", "a.b", "a-", "a0"})
    wipe::makeLink(std::string("tmp/") + name, "no such item");
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home()), emptied);
  EXPECT_EQ(wipe::log(0), Lines{});
}

TEST_F(Wipe, RemovesLinksToNowhereInAFolderThatCouldNotBeRemoved) {
  wipe::makeFile("Documents/first");
  wipe::makeFolder("Documents/stubborn/inner");
  wipe::makeLink("Documents/stubborn/to nowhere", "no such item");
  wipe::makeLink("Documents/stubborn/inner/to nowhere", "no such item");
  refuseToRemoveWhatIsStubborn();
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home("Documents")), Lines{"stubborn"});
  EXPECT_EQ(wipe::log(0).size(), 1U);
}

TEST_F(Wipe, RemovesSocketsPipesAndFilesThatAreOpen) {
  ASSERT_EQ(mkfifo(wipe::home("Documents/pipe").c_str(), 0600), 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string name = wipe::home("tmp/socket");
  ASSERT_LT(name.size(), sizeof address.sun_path);
  name.copy(address.sun_path, name.size());
  const int listening = socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(bind(listening, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
  wipe::makeFile("Documents/open");
  const std::ifstream open(wipe::home("Documents/open"));
  cleanUp();
  close(listening);
  EXPECT_EQ(wipe::tree(wipe::home()), emptied);
  EXPECT_EQ(wipe::log(0), Lines{});
}

TEST_F(Wipe, RemovesATreeThatIsDeeperThanAnyPathAndHasMoreLevelsThanDescriptors) {
  constexpr int levels = 600;
  const std::string name = "a folder";
  int folder = open(wipe::home("Documents").c_str(), O_RDONLY | O_DIRECTORY);
  for (int i = 0; i < levels; ++i) {
    ASSERT_EQ(mkdirat(folder, name.c_str(), 0755), 0) << i;
    const int inner = openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY);
    close(folder);
    folder = inner;
  }
  close(openat(folder, "file", O_CREAT | O_WRONLY, 0644));
  close(folder);
  const rlimit few{64, 64};
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home()), emptied);
  EXPECT_EQ(wipe::log(0), Lines{});
  std::size_t documents = 0;
  for (const std::string &line : wipe::log())
    documents += line.find("/Documents/") != std::string::npos;
  EXPECT_EQ(documents, levels + 1u) << "a line for each level and the file";
}

TEST_F(Wipe, RemovesAHundredThousandItems) {
  for (int folder = 0; folder < 100; ++folder) {
    const std::string path = wipe::home("Documents/" + std::to_string(folder));
    ASSERT_EQ(mkdir(path.c_str(), 0755), 0);
    // Names of one file: a disk gives out many names faster than many files.
    close(open((path + "/0").c_str(), O_CREAT | O_WRONLY, 0644));
    for (int name = 1; name < 1000; ++name)
      ASSERT_EQ(link((path + "/0").c_str(), (path + "/" + std::to_string(name)).c_str()), 0);
  }
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home()), emptied);
  EXPECT_EQ(wipe::log(4).size(), 100000u + 100u + 2u) << "with Library/Caches and Library/Preferences";
  EXPECT_EQ(wipe::log(0), Lines{});
}

TEST_F(Wipe, SkipsSilentlyWhatSomebodyElseRemovesAfterTheListing) {
  wipe::makeFile("Documents/quick");
  wipe::makeFile("Documents/other");
  wipe::captureLog([](const std::string &line) {
    if (line.ends_with("/Documents/quick")) unlink(wipe::home("Documents/quick").c_str());
  });
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home()), emptied);
  EXPECT_EQ(wipe::log(0), Lines{});
}

TEST_F(Wipe, LogsOneErrorForWhatSomebodyElseRemovesAtTheLastMomentAndGoesOn) {
  wipe::makeFile("Documents/quick");
  wipe::makeFile("Documents/other");
  wipe::makeFile("Extra");
  beforeEachRemoval([](const std::string &path) {
    if (path.ends_with("/quick") || path.ends_with("/Extra")) unlink(path.c_str());
  });
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home()), emptied);
  Lines errors = wipe::log(0);
  std::ranges::sort(errors);
  EXPECT_EQ(errors,
            (Lines{"0 Error removing item: " + wipe::home("Documents/quick") + " (“quick” couldn’t be removed.)",
                   "0 Error removing item: " + wipe::home("Extra") + " (“Extra” couldn’t be removed.)"}));
}

TEST_F(Wipe, RemovesWhatItListedOfAFolderThatGrowsMeanwhile) {
  wipe::makeFile("Documents/first");
  wipe::makeFile("Documents/second");
  beforeEachRemoval([](const std::string &path) {
    if (path.find("/Documents/") != std::string::npos) wipe::makeFile("Documents/late");
  });
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home("Documents")), (Lines{"late"}));
  EXPECT_EQ(wipe::log(0), Lines{});
}

TEST_F(Wipe, EndsWhileAnotherThreadGoesOnWriting) {
  wipe::makeFile("Documents/busy/0");
  std::atomic<bool> stop{false};
  std::atomic<int> written{0};
  std::thread writer([&] {
    while (!stop) {
      std::error_code ignored;
      std::filesystem::create_directories(wipe::home("Documents/busy"), ignored);
      std::ofstream(wipe::home("Documents/busy/" + std::to_string(++written % 5000)));
    }
  });
  while (written < 1000)
    std::this_thread::yield();
  cleanUp();
  stop = true;
  writer.join();
  const Lines errors = wipe::log(0);
  for (const std::string &line : errors)
    EXPECT_TRUE(line.starts_with("0 Error removing item: " + wipe::home("Documents/busy"))) << line;
  EXPECT_FALSE(wipe::exists(wipe::home("Library/Caches"))) << "the walk went on";
  wipe::captureLog();
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home()), emptied) << "a second wipe takes what was written late";
}
