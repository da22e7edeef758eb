#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Bytes.h"
#include "Framework.h"

namespace qvwrap {

inline constexpr const char* kFrameworkFolder = "Frameworks/QVSandbox.framework";

/// An app, whatever it lies in. Paths in it are relative to the folder NAME.app.
class App {
public:
  virtual ~App() = default;
  App(const App&) = delete;
  App& operator=(const App&) = delete;

  /// As a person would call it: "Notes.app".
  virtual std::string name() const = 0;
  virtual const std::string& executableName() const = 0;
  virtual View executable() const = 0;
  /// Whether the app holds a file or folder of this path.
  virtual bool holds(const std::string& path) const = 0;
  /// A file's content; nothing when it is not there. Throws Failure.
  virtual std::optional<Bytes> content(const std::string& path) const = 0;
  /// What else in the app runs, each in a process of its own.
  virtual std::vector<std::string> extensions() const = 0;

  /// Puts the framework in and `executable` in the place of the one that is there. Throws Failure, with nothing
  /// changed.
  virtual void put(View executable, const Framework& framework, bool addFolder) = 0;

  /// What take has made of the app's folder or archive.
  enum class Taken { kAsBefore, kRepacked };
  /// Takes the framework out, and the empty Frameworks with it if `removeFolder`; `executable` is what was there
  /// before. Throws Failure.
  virtual Taken take(View executable, bool removeFolder) = 0;

protected:
  App() = default;
};

/// An app in a folder or an archive. Throws Failure.
std::unique_ptr<App> openApp(const std::filesystem::path& path);

/// CFBundleExecutable. Throws Failure when it is missing or leads out of the app.
std::string executableNameIn(View infoPlist);

} // namespace qvwrap
