#include "container/Refusal.h"

#include <unistd.h>

#include <string>

namespace qvdevice {

void refuse(std::string_view sentence) {
  std::string line = "QVDevice: ";
  line.append(sentence).append("\n");
  // Nothing can be done about a standard error that takes no more.
  [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, line.data(), line.size());
  ::_exit(kRefusedStatus);
}

} // namespace qvdevice
