#include "Stream.h"

namespace qvdevice {

static constexpr char kRecordStart = '\x1e';

void Stream::feed(std::string_view bytes) {
  for (const char byte : bytes) {
    if (byte == kRecordStart) {
      // A record may come in the middle of a line that the app has not finished yet.
      endLine();
      inRecord_ = true;
    } else if (byte == '\n') {
      if (pending_.empty() && !inRecord_) {
        onLine("");
      }
      endLine();
    } else {
      pending_ += byte;
    }
  }
}

void Stream::finish() { endLine(); }

void Stream::endLine() {
  const std::string text = std::exchange(pending_, {});
  const bool wasRecord = std::exchange(inRecord_, false);
  if (text.empty()) {
    return;
  }
  if (wasRecord) {
    const auto record = nlohmann::ordered_json::parse(text, nullptr, false);
    if (record.is_object()) {
      onRecord(record);
      return;
    }
  }
  onLine(text);
}

} // namespace qvdevice
