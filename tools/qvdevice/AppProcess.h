#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "Answers.h"
#include "Child.h"
#include "Console.h"
#include "ExtensionService.h"
#include "Stream.h"

namespace qvdevice {

/// What comes back when something was done, or not.
struct Answer {
  /// Why it was not done; empty when it was.
  std::string refusal;
  /// What it was asked for; null when that was nothing.
  nlohmann::ordered_json result{};
};

/// An app that runs on the device: what it says is read, and things are done to it.
class AppProcess {
public:
  using Clock = std::chrono::steady_clock;

  /// Starts the program of `launch`, which may bring descriptors from 5 on, with one console for all that it says, and
  /// a socket for what it is told. With a device's folder, the app may start the extensions that are installed there.
  AppProcess(Launch launch, const std::filesystem::path& device, Stream& stream);
  ~AppProcess();
  AppProcess(const AppProcess&) = delete;
  AppProcess& operator=(const AppProcess&) = delete;

  /// Reads until `done` answers true, the app has ended, or the time is up; whether `done` did.
  bool readUntil(const std::function<bool()>& done, Clock::duration limit);
  /// Reads until the app has been silent for `span`, at most for `limit`.
  void readUntilQuiet(Clock::duration span, Clock::duration limit);

  /// Tells the app to do something; the reason when it will not, empty when it has. Nothing when there is no answer:
  /// it has ended, or the time is up.
  std::optional<std::string> tell(const nlohmann::ordered_json& command, Clock::duration limit);
  /// The same, with what it answers.
  std::optional<Answer> ask(const nlohmann::ordered_json& command, Clock::duration limit);

  /// Whether it has not answered yet what it was told last, though nobody waits for that any more.
  bool owesAnswer() { return answers_.isOwed(); }

  /// Tells the extension that was started last, once there is one, and answers like `tell`, but that an extension
  /// which ends instead of answering has done what it was told.
  std::optional<std::string> tellExtension(const nlohmann::ordered_json& command, Clock::duration limit);
  /// The same, with what it answers.
  std::optional<Answer> askExtension(const nlohmann::ordered_json& command, Clock::duration limit);
  /// Whether an extension runs, and has answered what it was told before.
  bool extensionListens();
  /// Ends its process as the system does that needs the memory.
  std::optional<std::string> killExtension(Clock::duration limit);

  /// Reading also looks at `descriptor`, and calls `ready` when there is something to read, until `ready` has read it.
  void watch(int descriptor, std::function<void()> ready);
  /// Once it answers true, whoever waits for the app or its extension waits no longer. Asked whenever something was
  /// read or watched.
  std::function<bool()> enough;
  /// Where signals go that are sent to this program; without it, to the app.
  std::function<void(int)> onSignal;

  /// The status that waitpid gave, once the app has ended and all that it said has been read.
  std::optional<int> ended() const { return ended_; }

private:
  void readOnce(Clock::duration limit);
  void readOutput();
  void readAnswers();
  void takeSignals();
  pid_t awaitExtension(Clock::duration limit);

  Stream& stream_;
  SignalQueue signals_;
  Console console_;
  int control_ = -1;
  int nothing_ = -1;
  bool controlOpen_ = true;
  std::optional<ExtensionService> extensions_;
  std::optional<Child> child_;
  std::optional<int> ended_;
  int watched_ = -1;
  std::function<void()> watchedReady_;
  Clock::time_point lastSaid_ = Clock::now();
  Answers answers_;
};

} // namespace qvdevice
