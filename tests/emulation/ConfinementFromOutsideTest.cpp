// A device under an emulator starts only when it is certain that it has been confined.

#include <filesystem>
#include <string>

#include "Folders.h"
#include "support/Child.h"

namespace {

constexpr int kRefused = 78;

class ConfinementFromOutside : public Folders {
protected:
  std::string marker() const { return container + "\n"; }

  void expectRefused(const ChildResult& result, const std::string& sentence) {
    EXPECT_EQ(result.status, kRefused);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "QVDevice: " + sentence + "; under an emulator start it through qvconfine\n");
  }

  const std::string kNotConfined = "this process was not confined to its container before it started";
};

} // namespace

TEST_F(ConfinementFromOutside, StartsWhereItWasConfined) {
  const ChildResult result = runChild({QVCONFINE, CONFINED_STARTER, container}, {{"QVDEVICE_CONTAINER", container}});
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output, "started\n");
}

TEST_F(ConfinementFromOutside, StartsWhereItWasConfinedToADeviceAsWell) {
  const ChildResult result = runChild({QVCONFINE, CONFINED_STARTER, container, device},
                                      {{"QVDEVICE_CONTAINER", container}, {"QVDEVICE_DEVICE", device}});
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output, "started\n");
}

TEST_F(ConfinementFromOutside, ThatNobodySpeaksOfIsRefused) {
  expectRefused(runChild({CONFINED_STARTER, container}, {{"QVDEVICE_CONTAINER", container}}), kNotConfined);
}

TEST_F(ConfinementFromOutside, ToAnotherContainerIsRefused) {
  const std::string other = container + "/other";
  std::filesystem::create_directory(other);
  expectRefused(runChild({QVCONFINE, CONFINED_STARTER, other}, {{"QVDEVICE_CONTAINER", container}}), kNotConfined);
}

TEST_F(ConfinementFromOutside, ToADeviceThatIsNotTheProcesssIsRefused) {
  expectRefused(runChild({QVCONFINE, CONFINED_STARTER, container},
                         {{"QVDEVICE_CONTAINER", container}, {"QVDEVICE_DEVICE", device}}),
                kNotConfined);
}

TEST_F(ConfinementFromOutside, ThatIsOnlySpokenOfIsRefusedAndLeavesNothing) {
  const ChildResult result = runChild({CONFINED_STARTER, container}, {{"QVDEVICE_CONFINED", marker()}});
  EXPECT_EQ(result.status, kRefused);
  EXPECT_EQ(result.output, "");
  EXPECT_NE(result.errors.find("QVDevice: this process can write in \""), std::string::npos) << result.errors;
  for (const auto& entry : std::filesystem::directory_iterator(outside))
    EXPECT_EQ(entry.path().filename().string().find("qvdevice-confinement"), std::string::npos) << entry.path();
}

TEST_F(ConfinementFromOutside, ToAFolderAroundTheContainerIsRefused) {
  // Confined, but not enough: the folder that holds the container can be written.
  const std::string inner = container + "/inner";
  std::filesystem::create_directory(inner);
  const ChildResult result =
      runChild({QVCONFINE, "/usr/bin/env", "QVDEVICE_CONFINED=" + inner + "\n", CONFINED_STARTER, inner},
               {{"QVDEVICE_CONTAINER", container}});
  expectRefused(result, "this process can write in \"" + container + "\", which is outside its container");
}

TEST_F(ConfinementFromOutside, ThatNothingProvesIsRefused) {
  // No attempt succeeds, but for another reason.
  const ChildResult result = runChild({QVCONFINE, CONFINED_STARTER, container},
                                      {{"QVDEVICE_CONTAINER", container}, {"WITHOUT_DESCRIPTORS", "1"}});
  expectRefused(result, "nothing shows that this process is confined to its container");
}
