// The HTML report of a run, as a file.
#include "Program.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <sys/resource.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::string kNoSymbolizer = "ASAN_OPTIONS=symbolize=0";

std::string contentOf(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

class HtmlReport : public testing::Test {
protected:
  Ended run(const std::string& app, const std::string& events = "resign\n") const {
    return qvdevice({"run", "--json", "--report", report, "--events", folder.write("events", events), app},
                    {kNoSymbolizer});
  }

  std::string html() const { return contentOf(report / "index.html"); }

  const WorkFolder folder;
  const fs::path report = folder.path() / "new/report";
};

TEST_F(HtmlReport, isOneFileThatLoadsNothingAndRunsNothing) {
  const Ended ended = run(folder.app("One", appSource("puts(\"hello\"); fflush(stdout);")));
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(objectsOf(ended.out, "report")[0]["page"], (report / "index.html").string());
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(report)) {
    names.push_back(entry.path().filename());
  }
  EXPECT_EQ(names, std::vector<std::string>{"index.html"});
  EXPECT_THAT(html(), StartsWith("<!DOCTYPE html>"));
  for (const char* loading : {"<script", "<link", "<iframe", "@import", "url(", " src=\"http"}) {
    EXPECT_THAT(html(), Not(HasSubstr(loading)));
  }
  EXPECT_THAT(html(), HasSubstr("hello"));
  EXPECT_THAT(html(), HasSubstr("One was told to end and did, with status 0."));
}

TEST_F(HtmlReport, escapesWhatAnAppSaysWritesAndShows) {
  const std::string app =
      folder.app("Rude", appSource("puts(\"<script>alert(1)</script> & \\\"quotes\\\" \\x01 \\xff\"); fflush(stdout); "
                                   "[@\"x\" writeToFile:[self pathOf:@\"<img src=x>.txt\"] atomically:YES "
                                   "encoding:NSUTF8StringEncoding error:NULL];"));
  EXPECT_EQ(run(app, "set authState 2 \"<b>gone</b>\"\nends\n").status, 0);
  EXPECT_THAT(html(),
              HasSubstr("&lt;script&gt;alert(1)&lt;/script&gt; &amp; &quot;quotes&quot; \xef\xbf\xbd \xef\xbf\xbd"));
  EXPECT_THAT(html(), HasSubstr("&lt;b&gt;gone&lt;/b&gt;"));
  EXPECT_THAT(html(), Not(HasSubstr("<script")));
  EXPECT_THAT(html(), HasSubstr("&lt;img src=x&gt;.txt"));
  EXPECT_THAT(html(), Not(HasSubstr("<img src=x")));
  EXPECT_THAT(html(), Not(HasSubstr("<b>gone")));
}

TEST_F(HtmlReport, showsNoPictureThatAnAppMadeUp) {
  const std::string app = folder.app(
      "Liar", appSource("printf(\"\\x1e{\\\"kind\\\":\\\"screen\\\",\\\"png\\\":\\\"x\\\\\\\" onerror=\\\\\\\"y\\\","
                        "\\\"width\\\":\\\"9\\\",\\\"height\\\":-1}\\n\"); fflush(stdout);"));
  EXPECT_EQ(run(app).status, 0);
  EXPECT_THAT(html(), Not(HasSubstr("onerror")));
}

TEST_F(HtmlReport, tellsTheContainerBeforeAndAfter) {
  const std::string app =
      folder.app("Writer", appSource("[@\"x\" writeToFile:[self pathOf:@\"kept.txt\"] atomically:YES "
                                     "encoding:NSUTF8StringEncoding error:NULL];"));
  EXPECT_EQ(run(app).status, 0);
  EXPECT_THAT(html(), HasSubstr("kept.txt</th><td class=\"none\">–</td><td class=\"kept\">complete until first user "
                                "authentication</td><td class=\"change\">new</td>"));
}

TEST_F(HtmlReport, isWrittenWhenTheAppCrashes) {
  const std::string app =
      folder.app("Bad", appSource("return YES; } - (void)applicationWillResignActive:(UIApplication *)a { "
                                  "signal(SIGSEGV, SIG_DFL); raise(SIGSEGV); } - (int)other {"));
  EXPECT_EQ(run(app).status, 1);
  EXPECT_THAT(html(), HasSubstr("Bad crashed by signal 11 (Segmentation fault)."));
}

TEST_F(HtmlReport, replacesAnOlderOneAndNothingElse) {
  const std::string app = folder.app("One", appSource(""));
  EXPECT_EQ(run(app).status, 0);
  EXPECT_EQ(run(app).status, 0) << "an older report is replaced";
  std::ofstream(report / "notes.txt") << "mine";
  const Ended other = run(app);
  EXPECT_EQ(other.status, 74);
  EXPECT_EQ(other.out, "") << "the app was started";
  EXPECT_THAT(other.err, HasSubstr("holds notes.txt, which is no report of an earlier run"));
  fs::remove(report / "notes.txt");
  std::ofstream(report / "index.html") << "<html>mine</html>";
  EXPECT_EQ(run(app).status, 74);
  EXPECT_EQ(html(), "<html>mine</html>");
}

TEST_F(HtmlReport, intoAFolderThatCannotBeMadeIsRefusedBeforeTheAppStarts) {
  folder.write("new", "a file");
  const Ended ended = run(folder.app("One", appSource("")));
  EXPECT_EQ(ended.status, 74);
  EXPECT_EQ(ended.out, "");
  EXPECT_THAT(ended.err, HasSubstr("cannot make the report's folder"));
}

/// Meanwhile no file grows beyond 4 MB, which is more than an app's own program has, also under a sanitizer. Programs
/// that are started inherit that.
class SmallFiles {
public:
  SmallFiles() : action_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit small{4 << 20, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~SmallFiles() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, action_);
  }
  SmallFiles(const SmallFiles&) = delete;
  SmallFiles& operator=(const SmallFiles&) = delete;

private:
  sighandler_t action_;
  rlimit before_{};
};

TEST_F(HtmlReport, thatDoesNotFitOnTheDiskIsAClearErrorAndLeavesNoHalfOfIt) {
  const std::string app = folder.app("Talker", appSource("for (int i = 0; i < 80000; ++i) "
                                                         "printf(\"a line of some length, again and again %d\\n\", i); "
                                                         "fflush(stdout);"));
  const std::string events = folder.write("events", "resign\n");
  const SmallFiles limit;
  const Ended ended = qvdevice({"run", "--json", "--report", report, "--events", events, app}, {kNoSymbolizer});
  EXPECT_EQ(ended.status, 74) << ended.err;
  EXPECT_THAT(ended.err, HasSubstr("cannot be written: File too large"));
  EXPECT_TRUE(fs::is_empty(report));
}

} // namespace
