// An app's preferences: in its container, under its identifier.
#include "App.h"

namespace {

const std::string kPreferences = "/Library/Preferences/";

std::vector<std::string> preferenceFiles(const App &app) {
  std::vector<std::string> names;
  for (const auto &entry : std::filesystem::directory_iterator(app.container() + kPreferences)) {
    if (entry.is_regular_file()) names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  return names;
}

} // namespace

TEST(UserDefaults, LieInThePreferencesFolderUnderTheBundleIdentifier) {
  const App app("com.example.vault");
  app.run({"set", "colour", "blue"});
  EXPECT_EQ(preferenceFiles(app), (std::vector<std::string>{"com.example.vault.plist"}));
  EXPECT_EQ(app.run({"get", "colour"}), "blue\n");
}

TEST(UserDefaults, NameTheAppsOwnDomainsAndNotTheSystems) {
  const App app("com.example.vault");
  app.run({"set", "colour", "blue"});
  app.run({"set-domain", "com.example.vault.extra", "depth", "3"});
  EXPECT_EQ(app.run({"domains"}), "com.example.vault\ncom.example.vault.extra\n");
}

TEST(UserDefaults, OfARemovedDomainAreGoneForTheNextLaunchToo) {
  const App app("com.example.vault");
  app.run({"set", "colour", "blue"});
  app.run({"set-domain", "com.example.vault.extra", "depth", "3"});
  EXPECT_EQ(app.run({"remove-domains"}), "com.example.vault\ncom.example.vault.extra\n");
  EXPECT_EQ(preferenceFiles(app), (std::vector<std::string>{}));
  EXPECT_EQ(app.run({"get", "colour"}), "(null)\n");
  app.run({"set", "colour", "green"});
  EXPECT_EQ(app.run({"get", "colour"}), "green\n");
}

TEST(UserDefaults, AnswerToPersistentDomainNamesUnlessTheDeviceHasNone) {
  const App app("com.example.vault");
  EXPECT_EQ(app.run({"responds"}), "yes\n");
  EXPECT_EQ(app.run({"responds"}, {}, R"({"persistentDomainNames":true})"), "yes\n");
  EXPECT_EQ(app.run({"responds"}, {}, R"({"persistentDomainNames":false})"), "no\n");
  app.run({"set", "colour", "blue"}, {}, R"({"persistentDomainNames":false})");
  EXPECT_EQ(app.run({"get", "colour"}), "blue\n");
}
