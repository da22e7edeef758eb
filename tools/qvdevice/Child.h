#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <csignal>

#include <sys/types.h>

namespace qvdevice {

/// What to start, and what it finds when it starts.
struct Launch {
  std::vector<std::string> command;
  /// Changes to the environment: a value, or nothing to take the variable away.
  std::map<std::string, std::optional<std::string>> environment;
  /// Descriptors given to the program: ours, and the number it has there.
  std::vector<std::pair<int, int>> descriptors;
  /// The folders that the program may write in, of a program that does not confine itself: its container, the device's.
  std::optional<std::pair<std::string, std::string>> confinement{};
  /// Whether all that this process ever starts comes from this program, and is to end with it.
  bool alone = true;
  /// Whether what the terminal sends does not reach the program.
  bool ownGroup = false;
};

/// Signals that would end or address qvdevice arrive as something to read instead, for as long as this object lives.
/// Children start with none of them blocked. Threads that are started meanwhile leave these signals to it.
class SignalQueue {
public:
  SignalQueue();
  ~SignalQueue();
  SignalQueue(const SignalQueue&) = delete;
  SignalQueue& operator=(const SignalQueue&) = delete;

  int descriptor() const { return descriptor_; }

  /// Takes the waiting signals and passes on to `child` each one that another process sent. What the terminal
  /// sends has reached the child already, as a member of the same process group.
  void forwardTo(pid_t child);

  /// Takes the waiting signals; those that do not tell of a child.
  std::vector<int> take();

private:
  int descriptor_;
  sigset_t before_{};
};

/// A child process: started, waited for, never left behind.
class Child {
public:
  /// Throws std::system_error when the program cannot be started at all.
  explicit Child(const Launch& launch);
  /// Kills the child if it still runs and, when it is alone, what it has started and left behind.
  ~Child();
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  pid_t pid() const { return pid_; }

  /// The status that waitpid gave, once the child has ended.
  std::optional<int> poll();

  /// Waits for the end, forwarding signals; the status that waitpid gives.
  int wait(SignalQueue& signals);

private:
  pid_t pid_ = -1;
  std::optional<int> status_;
  bool alone_;
};

/// The exit status by which a shell would tell of `waitStatus`.
int shellStatus(int waitStatus);

} // namespace qvdevice
