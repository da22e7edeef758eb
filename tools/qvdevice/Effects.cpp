#include "Effects.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <system_error>
#include <utility>

#include <nlohmann/json.hpp>
#include <png.h>
#include <unistd.h>

#include "Child.h"
#include "Container.h"
#include "Failure.h"
#include "Installation.h"

namespace fs = std::filesystem;

namespace qvdevice {

namespace {

/// Reads the whole image, so that a damaged one is found here, with the reason.
void check(const fs::path& file) {
  if (!fs::exists(file)) {
    throw Failure(kNoInput, "there is no image at " + file.string());
  }
  if (!fs::is_regular_file(file)) {
    throw Failure(kBadInput, file.string() + " is no file");
  }
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> opened(std::fopen(file.c_str(), "rb"), &std::fclose);
  if (!opened) {
    throw Failure(kNoInput, "cannot read " + file.string());
  }
  png_byte signature[8]{};
  if (std::fread(signature, 1, sizeof signature, opened.get()) != sizeof signature ||
      png_sig_cmp(signature, 0, sizeof signature) != 0) {
    throw Failure(kBadInput, file.string() + " is no PNG");
  }
  std::rewind(opened.get());
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  bool read = png_image_begin_read_from_stdio(&image, opened.get()) != 0;
  if (read) {
    image.format = PNG_FORMAT_RGBA;
    const std::unique_ptr<void, void (*)(void*)> pixels(
        std::malloc(std::size_t{image.width} * image.height * PNG_IMAGE_PIXEL_SIZE(image.format)), &std::free);
    if (!pixels) {
      png_image_free(&image);
      throw Failure(kBadInput, file.string() + " is too large");
    }
    read = png_image_finish_read(&image, nullptr, pixels.get(), 0, nullptr) != 0;
  }
  const std::string reason = image.message;
  png_image_free(&image);
  if (!read) {
    throw Failure(kBadInput, file.string() + " is damaged: " + reason);
  }
}

fs::path outputOf(const EffectsOptions& options) {
  if (options.output) {
    if (fs::is_directory(*options.output)) {
      throw Failure(kUsage, options.output->string() + " is a folder; name a file");
    }
    return *options.output;
  }
  const fs::path made = (options.image ? options.image->stem().string() + "-" : std::string()) + "effects.png";
  if (fs::exists(made)) {
    throw Failure(kUsage, made.string() + " is there already; -o " + made.string() + " replaces it");
  }
  return made;
}

/// What the program says on its standard output, and how it ends.
std::pair<int, std::string> runProgram(Launch launch, const fs::path& folder) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> said(std::fopen((folder / "said").c_str(), "w+"), &std::fclose);
  if (!said) {
    throw Failure(kCannotStart, "cannot write in " + folder.string());
  }
  launch.descriptors.emplace_back(fileno(said.get()), STDOUT_FILENO);
  SignalQueue signals;
  Child child(launch);
  const int status = shellStatus(child.wait(signals));
  std::rewind(said.get());
  std::string text;
  for (int c = std::fgetc(said.get()); c != EOF && c != '\n'; c = std::fgetc(said.get())) {
    text += static_cast<char>(c);
  }
  return {status, text};
}

} // namespace

int effects(const EffectsOptions& options) {
  if (options.image) {
    check(*options.image);
  }
  const fs::path output = outputOf(options);
  const fs::path library = libraryFolder() / "libQVSandbox.so";
  if (!fs::exists(library)) {
    throw Failure(kCannotStart, "the library is not there: " + library.string());
  }
  const TemporaryContainer temporary;
  const fs::path container = fs::canonical(temporary.path());
  const fs::path sheet = container / "sheet.png";
  Launch launch;
  launch.command = {(programFolder() / "qveffects").string(), sheet.string()};
  if (options.image) {
    // By its own name, which may tell its scale.
    const fs::path copy = container / ("picture" + options.image->filename().string());
    fs::copy_file(*options.image, copy);
    launch.command.push_back(copy.string());
  }
  launch.environment["QVDEVICE_CONTAINER"] = container.string();
  launch.environment["QVDEVICE_DEVICE"] = std::nullopt;
  launch.environment["LD_PRELOAD"] = library.string();
  try {
    const auto [status, text] = runProgram(launch, container);
    if (status != 0) {
      throw Failure(text.empty() ? kInternal : kBadInput,
                    (options.image ? options.image->string() : std::string("the sample picture")) + ": " +
                        (text.empty() ? "the program ended with status " + std::to_string(status) : text));
    }
  } catch (const std::system_error& error) {
    throw Failure(kCannotStart, std::string("qveffects does not start: ") + error.what());
  }
  std::error_code error;
  fs::copy_file(sheet, output, fs::copy_options::overwrite_existing, error);
  if (error) {
    throw Failure(kCannotStart, "cannot write " + output.string() + ": " + error.message());
  }
  if (options.json) {
    const nlohmann::ordered_json line{{"kind", "effects"}, {"sheet", output.string()}};
    std::printf("%s\n", line.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace).c_str());
  } else {
    std::printf("%s\n", output.c_str());
  }
  return kDone;
}

} // namespace qvdevice
