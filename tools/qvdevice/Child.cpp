#include "Child.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include "container/Confinement.h"

namespace qvdevice {

namespace {

constexpr std::array kQueuedSignals{SIGCHLD, SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGUSR1, SIGUSR2};

sigset_t queuedSignals() {
  sigset_t set;
  sigemptyset(&set);
  for (const int number : kQueuedSignals) {
    sigaddset(&set, number);
  }
  return set;
}

[[noreturn]] void fail(const std::string& what) { throw std::system_error(errno, std::generic_category(), what); }

/// Runs between fork and exec. Ends in the program, or with the errno that prevented it in `report`.
[[noreturn]] void become(const Launch& launch, int report, pid_t parent) {
  const auto giveUp = [report] {
    const int reason = errno;
    (void)!write(report, &reason, sizeof reason);
    _exit(127);
  };
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (launch.ownGroup) {
    setpgid(0, 0);
  }
  if (getppid() != parent) {
    _exit(127);
  }
  const sigset_t queued = queuedSignals();
  sigprocmask(SIG_UNBLOCK, &queued, nullptr);

  // Moved out of the way first: one descriptor's new number may be another's old one.
  std::vector<std::pair<int, int>> moved;
  for (const auto& [ours, theirs] : launch.descriptors) {
    const int aside = fcntl(ours, F_DUPFD_CLOEXEC, 64);
    if (aside < 0) {
      giveUp();
    }
    moved.emplace_back(aside, theirs);
  }
  for (const auto& [aside, theirs] : moved) {
    if (dup2(aside, theirs) < 0) {
      giveUp();
    }
  }
  if (launch.confinement) {
    confineWritesTo(launch.confinement->first, launch.confinement->second);
  }
  for (const auto& [name, value] : launch.environment) {
    if ((value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str())) != 0) {
      giveUp();
    }
  }
  std::vector<char*> arguments;
  for (const std::string& argument : launch.command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  // A path means that file. For execvp a file that is no program would be a script for the shell.
  (launch.command.front().find('/') == std::string::npos ? execvp : execv)(arguments.front(), arguments.data());
  giveUp();
  std::abort();
}

/// Processes that the child started and did not wait for come to us when it ends: they are ended too, so that nobody
/// writes in a container that is being removed.
void endOrphans() {
  const std::string list = "/proc/self/task/" + std::to_string(getpid()) + "/children";
  for (;;) {
    std::ifstream children(list);
    bool any = false;
    for (pid_t orphan = 0; children >> orphan;) {
      any = true;
      kill(orphan, SIGKILL);
      while (waitpid(orphan, nullptr, 0) < 0 && errno == EINTR) {
      }
    }
    if (!any) {
      return;
    }
  }
}

} // namespace

SignalQueue::SignalQueue() {
  const sigset_t queued = queuedSignals();
  pthread_sigmask(SIG_BLOCK, &queued, &before_);
  descriptor_ = signalfd(-1, &queued, SFD_CLOEXEC | SFD_NONBLOCK);
  if (descriptor_ < 0) {
    fail("signalfd");
  }
}

SignalQueue::~SignalQueue() {
  close(descriptor_);
  pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

std::vector<int> SignalQueue::take() {
  std::vector<int> numbers;
  signalfd_siginfo signal{};
  while (read(descriptor_, &signal, sizeof signal) == sizeof signal) {
    if (signal.ssi_signo != SIGCHLD) {
      numbers.push_back(static_cast<int>(signal.ssi_signo));
    }
  }
  return numbers;
}

void SignalQueue::forwardTo(pid_t child) {
  signalfd_siginfo signal{};
  while (read(descriptor_, &signal, sizeof signal) == sizeof signal) {
    const int number = static_cast<int>(signal.ssi_signo);
    if (number != SIGCHLD && signal.ssi_code != SI_KERNEL) {
      kill(child, number);
    }
  }
}

Child::Child(const Launch& launch) : alone_(launch.alone) {
  std::array<int, 2> report{};
  if (pipe2(report.data(), O_CLOEXEC) != 0) {
    fail("pipe");
  }
  prctl(PR_SET_CHILD_SUBREAPER, 1);
  const pid_t parent = getpid();
  pid_ = fork();
  if (pid_ < 0) {
    fail("fork");
  }
  if (pid_ == 0) {
    become(launch, report[1], parent);
  }
  close(report[1]);
  int reason = 0;
  const bool failed = read(report[0], &reason, sizeof reason) == sizeof reason;
  close(report[0]);
  if (failed) {
    waitpid(pid_, nullptr, 0);
    throw std::system_error(reason, std::generic_category(), launch.command.front());
  }
}

Child::~Child() {
  if (!poll()) {
    kill(pid_, SIGKILL);
    while (waitpid(pid_, nullptr, 0) < 0 && errno == EINTR) {
    }
  }
  if (alone_) {
    endOrphans();
  }
}

std::optional<int> Child::poll() {
  int status = 0;
  const pid_t ended = status_ ? 0 : waitpid(pid_, &status, WNOHANG);
  if (ended == pid_) {
    status_ = status;
  } else if (ended < 0 && errno == ECHILD) {
    status_ = SIGKILL; // with all others, when one that is alone had ended
  }
  return status_;
}

int Child::wait(SignalQueue& signals) {
  for (;;) {
    if (const auto status = poll()) {
      return *status;
    }
    pollfd ready{signals.descriptor(), POLLIN, 0};
    ::poll(&ready, 1, -1);
    signals.forwardTo(pid_);
  }
}

int shellStatus(int waitStatus) {
  return WIFSIGNALED(waitStatus) ? 128 + WTERMSIG(waitStatus) : WEXITSTATUS(waitStatus);
}

} // namespace qvdevice
