#include "AppProcess.h"

#include <array>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace qvdevice {

// The numbers that the app finds its descriptors under.
static constexpr int kTraceDescriptor = 3;
static constexpr int kControlDescriptor = 4;

static constexpr char kNoExtension[] = "no extension runs";

static Answer answerIn(const std::string& line) {
  auto answer = nlohmann::ordered_json::parse(line, nullptr, false);
  if (!answer.is_object() || !answer.contains("ok")) {
    return {"it answered in a way that nobody understands"};
  }
  if (!answer.value("ok", false)) {
    return {answer.value("error", std::string("it gave no reason"))};
  }
  return {{}, answer.contains("result") ? std::move(answer["result"]) : nullptr};
}

static std::optional<std::string> refusalOf(const std::optional<Answer>& answer) {
  return answer ? std::optional(answer->refusal) : std::nullopt;
}

AppProcess::AppProcess(Launch launch, const std::filesystem::path& device, Stream& stream) : stream_(stream) {
  std::array<int, 2> sockets{};
  const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
  if (nothing < 0 || socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()) != 0) {
    throw std::system_error(errno, std::generic_category(), "no channel to the app");
  }
  const int output = console_.writingEnd();
  control_ = sockets[0];
  launch.descriptors.insert(launch.descriptors.end(), {{nothing, STDIN_FILENO},
                                                       {output, STDOUT_FILENO},
                                                       {output, STDERR_FILENO},
                                                       {output, kTraceDescriptor},
                                                       {sockets[1], kControlDescriptor}});
  launch.environment["QVDEVICE_TRACE_FD"] = std::to_string(kTraceDescriptor);
  launch.environment["QVDEVICE_CONTROL_FD"] = std::to_string(kControlDescriptor);
  launch.environment["QVDEVICE_EXTENSIONS"] = std::nullopt;
  if (!device.empty()) {
    extensions_.emplace(device, std::vector<std::pair<int, int>>{
                                    {nothing, STDIN_FILENO}, {output, STDOUT_FILENO}, {output, STDERR_FILENO}});
    launch.environment["QVDEVICE_EXTENSIONS"] = extensions_->address();
  }
  child_.emplace(launch);
  // The one without a number to read is kept for the extensions to come.
  nothing_ = nothing;
  close(sockets[1]);
}

AppProcess::~AppProcess() {
  child_.reset();
  close(control_);
  close(nothing_);
}

void AppProcess::readOutput() {
  std::array<char, 65536> buffer;
  for (;;) {
    const ssize_t length = read(console_.readingEnd(), buffer.data(), buffer.size());
    if (length < 0 && errno == EINTR) {
      continue;
    }
    if (length <= 0) {
      return;
    }
    lastSaid_ = Clock::now();
    stream_.feed({buffer.data(), static_cast<std::size_t>(length)});
  }
}

void AppProcess::readAnswers() {
  std::array<char, 65536> buffer;
  const ssize_t length = recv(control_, buffer.data(), buffer.size(), MSG_DONTWAIT);
  if (length > 0) {
    answers_.add({buffer.data(), static_cast<std::size_t>(length)});
  } else if (length == 0 || (errno != EAGAIN && errno != EINTR)) {
    controlOpen_ = false;
  }
}

void AppProcess::takeSignals() {
  if (!onSignal) {
    signals_.forwardTo(child_->pid());
    return;
  }
  for (const int number : signals_.take()) {
    onSignal(number);
  }
}

void AppProcess::watch(int descriptor, std::function<void()> ready) {
  watched_ = descriptor;
  watchedReady_ = std::move(ready);
}

void AppProcess::readOnce(Clock::duration limit) {
  const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(std::max(limit, Clock::duration::zero()));
  // A channel that the app has closed would be ready for ever.
  std::array<pollfd, 5> ready{{{console_.readingEnd(), POLLIN, 0},
                               {controlOpen_ ? control_ : -1, POLLIN, 0},
                               {signals_.descriptor(), POLLIN, 0},
                               {extensions_ ? extensions_->descriptor() : -1, POLLIN, 0},
                               {watched_, POLLIN, 0}}};
  ::poll(ready.data(), ready.size(), static_cast<int>(milliseconds.count()));
  if (ready[1].revents != 0) {
    readAnswers();
  }
  if (ready[2].revents != 0) {
    takeSignals();
  }
  if (ready[3].revents != 0) {
    extensions_->serve();
  }
  if (ready[4].revents != 0) {
    watchedReady_();
  }
  // Asked before the last of its output is read: what it said before it ended is there by then.
  const auto status = child_->poll();
  readOutput();
  if (status && !ended_) {
    stream_.finish();
    ended_ = status;
  }
}

bool AppProcess::readUntil(const std::function<bool()>& done, Clock::duration limit) {
  const auto deadline = Clock::now() + limit;
  while (!done()) {
    if (ended_ || Clock::now() >= deadline || (enough && enough())) {
      return false;
    }
    readOnce(deadline - Clock::now());
  }
  return true;
}

void AppProcess::readUntilQuiet(Clock::duration span, Clock::duration limit) {
  const auto deadline = Clock::now() + limit;
  lastSaid_ = Clock::now();
  while (!ended_ && Clock::now() < deadline && Clock::now() - lastSaid_ < span) {
    readOnce(std::min(lastSaid_ + span, deadline) - Clock::now());
  }
}

std::optional<std::string> AppProcess::tell(const nlohmann::ordered_json& command, Clock::duration limit) {
  return refusalOf(ask(command, limit));
}

std::optional<Answer> AppProcess::ask(const nlohmann::ordered_json& command, Clock::duration limit) {
  const std::string line = command.dump() + "\n";
  if (send(control_, line.data(), line.size(), MSG_NOSIGNAL) < 0) {
    // Nobody is there to be told: it is ending, or has shut its ears.
    readUntil([] { return false; }, limit);
    return std::nullopt;
  }
  answers_.expect();
  std::optional<std::string> answer;
  readUntil([&] { return (answer = answers_.take()).has_value(); }, limit);
  return answer ? std::optional(answerIn(*answer)) : std::nullopt;
}

pid_t AppProcess::awaitExtension(Clock::duration limit) {
  if (!extensions_) {
    return 0;
  }
  readUntil([this] { return extensions_->newest() != 0; }, limit);
  return extensions_->newest();
}

std::optional<std::string> AppProcess::tellExtension(const nlohmann::ordered_json& command, Clock::duration limit) {
  return refusalOf(askExtension(command, limit));
}

std::optional<Answer> AppProcess::askExtension(const nlohmann::ordered_json& command, Clock::duration limit) {
  const pid_t extension = awaitExtension(limit);
  if (extension == 0) {
    return ended_ ? std::nullopt : std::optional(Answer{kNoExtension});
  }
  if (!extensions_->tell(extension, command)) {
    return Answer{};
  }
  std::optional<std::string> answer;
  const bool told = readUntil(
      [&] {
        answer = extensions_->answer(extension);
        return answer || extensions_->newest() != extension;
      },
      limit);
  if (!told) {
    return std::nullopt;
  }
  return answer ? answerIn(*answer) : Answer{};
}

bool AppProcess::extensionListens() {
  return extensions_ && extensions_->newest() != 0 && !extensions_->owesAnswer(extensions_->newest());
}

std::optional<std::string> AppProcess::killExtension(Clock::duration limit) {
  const pid_t extension = awaitExtension(limit);
  if (extension == 0) {
    return ended_ ? std::nullopt : std::optional<std::string>(kNoExtension);
  }
  extensions_->kill(extension);
  readUntil([&] { return extensions_->newest() != extension; }, limit);
  return std::string();
}

} // namespace qvdevice
