#include "observation/Decision.h"

#include <unwind.h>

#include <cstdint>

#include "container/Trace.h"
#include "observation/CallCounters.h"
#include "observation/Hooks.h"
#include "observation/Library.h"

namespace qvdevice {

namespace {

using Json = nlohmann::ordered_json;

thread_local Decision *open = nullptr;

/// Where calls are counted, it is known which of them this frame goes on from.
std::string hookedCallFrom(_Unwind_Context *context) {
  return hookedMethodOf(counterOfCall(_Unwind_GetIP(context), _Unwind_GetCFA(context)));
}

/// Otherwise the frame of the replacement itself is found, unless its last act was to call what asks.
std::string hookedMethodOfFrame(_Unwind_Context *context) {
  // The address that it returns to may be the first one after the function.
  const auto address = reinterpret_cast<void *>(_Unwind_GetIP(context) - 1);
  return isInLibrary(address) ? hookedMethodAt(_Unwind_FindEnclosingFunction(address)) : std::string();
}

_Unwind_Reason_Code lookAtFrame(_Unwind_Context *context, void *argument) {
  auto &asked = *static_cast<std::string *>(argument);
  asked = areCallsCounted() ? hookedCallFrom(context) : hookedMethodOfFrame(context);
  return asked.empty() ? _URC_NO_REASON : _URC_END_OF_STACK;
}

/// The hooked method nearest on the call stack; null when there is none.
Json askedBy() {
  std::string asked;
  _Unwind_Backtrace(lookAtFrame, &asked);
  return asked.empty() ? Json() : Json(asked);
}

} // namespace

Decision::Decision(std::string question, std::optional<Json> argument) : outermost_(open == nullptr) {
  if (!outermost_) return;
  open = this;
  record_ = {{"kind", "decision"}, {"asked", askedBy()}, {"question", std::move(question)}};
  if (argument) record_["argument"] = std::move(*argument);
}

Decision::~Decision() {
  if (outermost_) open = nullptr;
}

void Decision::answer(Json answer) {
  if (!outermost_) return;
  record_["read"] = std::move(read_);
  record_["answer"] = std::move(answer);
  trace(std::move(record_));
}

bool isDeciding() { return open != nullptr; }

void noteRead(const char *name, Json value) {
  if (open != nullptr) open->read_[name] = std::move(value);
}

void keepOfRead(const char *name, const std::string &key) {
  if (open == nullptr || !open->read_.contains(name)) return;
  Json &whole = open->read_[name];
  Json wanted = whole.is_object() && whole.contains(key) ? whole[key] : Json();
  whole = Json::object({{key, std::move(wanted)}});
}

} // namespace qvdevice
