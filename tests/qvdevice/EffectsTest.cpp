#include "Program.h"

#include <array>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

using testing::EndsWith;
using testing::HasSubstr;

namespace {

/// Width and height as the file's header tells them; zeros for no PNG.
std::array<unsigned, 2> sizeOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::array<unsigned char, 24> head{};
  stream.read(reinterpret_cast<char*>(head.data()), head.size());
  if (!stream || head[1] != 'P' || head[2] != 'N' || head[3] != 'G') {
    return {0, 0};
  }
  const auto number = [&head](std::size_t at) {
    return unsigned{head[at]} << 24 | unsigned{head[at + 1]} << 16 | unsigned{head[at + 2]} << 8 | head[at + 3];
  };
  return {number(16), number(20)};
}

std::string contentOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

Ended effectsIn(const WorkFolder& folder, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {"effects", "-o", folder.path() / "sheet.png"});
  return qvdevice(arguments);
}

TEST(EffectsCommand, showsTheLooksOfItsOwnPictureWithoutOne) {
  const WorkFolder folder;
  const Ended ended = effectsIn(folder, {});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(ended.out, (folder.path() / "sheet.png").string() + "\n");
  // Three panels of 420 by 315 in a row, in two rows, with margins of 20 and labels of 30.
  EXPECT_EQ(sizeOf(folder.path() / "sheet.png"), (std::array<unsigned, 2>{1340, 750}));
}

TEST(EffectsCommand, saysInJsonWhatItWrote) {
  const WorkFolder folder;
  const Ended ended = effectsIn(folder, {"--json"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(ended.out, R"({"kind":"effects","sheet":")" + (folder.path() / "sheet.png").string() + "\"}\n");
}

TEST(EffectsCommand, showsTheLooksOfAnImage) {
  const WorkFolder folder;
  ASSERT_EQ(effectsIn(folder, {}).status, 0);
  fs::rename(folder.path() / "sheet.png", folder.path() / "image@2x.png");
  const std::string before = contentOf(folder.path() / "image@2x.png");
  const Ended ended = effectsIn(folder, {folder.path() / "image@2x.png"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(sizeOf(folder.path() / "sheet.png"), (std::array<unsigned, 2>{1340, 590})); // panels of 420 by 235
  EXPECT_EQ(contentOf(folder.path() / "image@2x.png"), before);
}

TEST(EffectsCommand, showsTheLooksOfAnImageOfOnePixel) {
  const WorkFolder folder;
  // White, 1 by 1, as a PNG.
  const std::array<unsigned char, 67> png{
      0x89, 'P',  'N',  'G',  '\r', '\n', 0x1a, '\n', 0,    0,    0,    13,   'I',  'H',  'D',  'R',  0,
      0,    0,    1,    0,    0,    0,    1,    8,    0,    0,    0,    0,    0x3a, 0x7e, 0x9b, 0x55, 0,
      0,    0,    10,   'I',  'D',  'A',  'T',  0x78, 0x9c, 0x63, 0xf8, 0x0f, 0,    0x01, 0x01, 0x01, 0,
      0xb1, 0x38, 0xf6, 0x14, 0,    0,    0,    0,    'I',  'E',  'N',  'D',  0xae, 0x42, 0x60, 0x82};
  const std::string image = folder.write("one.png", std::string(reinterpret_cast<const char*>(png.data()), png.size()));
  const Ended ended = effectsIn(folder, {image});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(sizeOf(folder.path() / "sheet.png"), (std::array<unsigned, 2>{530, 122}));
}

TEST(EffectsCommand, refusesWhatIsMissingIsNoPNGOrIsDamaged) {
  const WorkFolder folder;
  const auto refusal = [&folder](const std::string& image, int status) {
    const Ended ended = effectsIn(folder, {image});
    EXPECT_EQ(ended.status, status) << ended.err;
    EXPECT_EQ(ended.out, "");
    EXPECT_FALSE(fs::exists(folder.path() / "sheet.png"));
    return ended.err;
  };
  const std::string missing = folder.path() / "nowhere.png";
  EXPECT_EQ(refusal(missing, 66), "qvdevice: there is no image at " + missing + "\n");
  const std::string other = folder.write("other.png", "GIF89a and so on");
  EXPECT_EQ(refusal(other, 65), "qvdevice: " + other + " is no PNG\n");
  const std::string empty = folder.write("empty.png", "");
  EXPECT_EQ(refusal(empty, 65), "qvdevice: " + empty + " is no PNG\n");
  EXPECT_EQ(refusal(folder.path(), 65), "qvdevice: " + folder.path().string() + " is no file\n");

  ASSERT_EQ(effectsIn(folder, {}).status, 0);
  const std::string whole = contentOf(folder.path() / "sheet.png");
  fs::remove(folder.path() / "sheet.png");
  const std::string damaged = folder.write("damaged.png", whole.substr(0, whole.size() / 2));
  EXPECT_THAT(refusal(damaged, 65), HasSubstr(damaged + " is damaged: "));
}

TEST(EffectsCommand, replacesOnlyAFileThatIsNamed) {
  const WorkFolder folder;
  const std::string named = folder.write("sheet.png", "something older");
  EXPECT_EQ(effectsIn(folder, {}).status, 0);
  EXPECT_NE(sizeOf(named)[0], 0u);

  fs::current_path(folder.path());
  EXPECT_EQ(qvdevice({"effects", named}).status, 0);
  EXPECT_NE(sizeOf(folder.path() / "sheet-effects.png")[0], 0u);
  folder.write("sheet-effects.png", "something older");
  const Ended ended = qvdevice({"effects", named});
  EXPECT_EQ(ended.status, 64);
  EXPECT_EQ(ended.err, "qvdevice: sheet-effects.png is there already; -o sheet-effects.png replaces it\n");
  EXPECT_EQ(contentOf(folder.path() / "sheet-effects.png"), "something older");
  EXPECT_EQ(qvdevice({"effects", "-o", folder.path()}).status, 64);
  EXPECT_THAT(qvdevice({"effects", "-o", folder.path() / "no" / "where.png"}).err,
              EndsWith("No such file or directory\n"));
}

} // namespace
