#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "AppProcess.h"
#include "Coverage.h"
#include "Events.h"
#include "Report.h"
#include "ScreenFolder.h"
#include "Stream.h"

namespace qvdevice {

/// One run of one app, from its launch to its end.
class AppRun {
public:
  /// `name` is the app's; it may take `limit` to start, to answer, to end.
  AppRun(std::string name, std::chrono::seconds limit, Report& report);
  AppRun(const AppRun&) = delete;
  AppRun& operator=(const AppRun&) = delete;

  /// Pictures of the screen are written there, too, unless it is null; it outlives this object.
  void keepScreensIn(ScreenFolder* folder) { screens_ = folder; }

  /// `device` is the folder of the device that the app runs on; empty when it has none. Throws std::system_error when
  /// the app cannot be started at all.
  Outcome play(Launch launch, const std::filesystem::path& device, const std::vector<Event>& events);

  /// What somebody does with an app that has just been started, until it has ended. Answers how it was ended; nothing
  /// when it ended by itself.
  using Session = std::function<std::optional<Outcome>(AppProcess&)>;

  /// The same, but that `session` says what happens, and when.
  Outcome drive(Launch launch, const std::filesystem::path& device, const Session& session);

  /// For a session. Whether the app has become active.
  bool active() const { return active_; }
  /// Tells the app to end, and waits for that.
  Outcome terminate(AppProcess& app, const Event& event);
  /// That it was ended; `how` says why.
  Outcome hung(const std::string& how) const;

  /// What has been seen of the library's hooks so far.
  const Coverage& coverage() const { return coverage_; }

private:
  using Unplayed = std::span<const Event>;

  void note(const nlohmann::ordered_json& record);
  std::optional<Outcome> await(AppProcess& app, const Event& event, Unplayed rest);
  std::optional<Outcome> tellExtension(AppProcess& app, const Event& event, Unplayed rest);
  std::optional<Outcome> tell(AppProcess& app, const Event& event, Unplayed afterwards);
  std::optional<Outcome> takePicture(AppProcess& app, const Event& event, Unplayed rest);
  /// How it ends when an event was refused, or was not, and the other was to be.
  std::optional<Outcome> judge(const std::string& who, const Event& event, const std::string& refusal) const;
  /// Takes a picture that nobody asked for, when the report wants one and the screen has changed.
  std::optional<Outcome> lookAtScreen(AppProcess& app);
  Outcome awaitEnd(AppProcess& app, const Event& event);

  Outcome endedByItself(int status, Unplayed unplayed) const;

  std::string name_;
  AppProcess::Clock::duration limit_;
  std::string limitText_;
  Report& report_;
  ScreenFolder* screens_ = nullptr;
  Stream stream_;
  Coverage coverage_;
  std::string lastLine_;
  nlohmann::ordered_json lastPicture_;
  bool launched_ = false;
  bool active_ = false;
  /// It has said that it is about to end.
  bool ending_ = false;
  /// An extension has its view controller shown, or it is known that it will not.
  bool extensionSettled_ = false;
  /// At the SDK, since the last event that was no waiting for one.
  std::set<std::string> calls_;
};

} // namespace qvdevice
