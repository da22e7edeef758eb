#include "HostConfiguration.hpp"

#include <optional>

#include "../policy/SBZorbelConfigHelper.hpp"
#include "HostDelegate.hpp"

namespace qvsb {

namespace {

/// What a host says that takes a configuration: nothing, or what is wrong with it.
using Complaint = Strong<NSString>;

bool takesConfiguration(NSObject host, SEL selector) {
  return hostAnswers<NSString, NSDictionary>(host, selector) || hostAnswers<void, NSDictionary>(host, selector);
}

/// A host whose method has no result has nothing to say against the configuration.
Complaint hand(NSObject host, SEL selector, NSDictionary configuration) {
  if (hostAnswers<NSString, NSDictionary>(host, selector)) {
    return send<NSString>(host, selector, configuration);
  }
  send<void>(host, selector, configuration);
  return nullptr;
}

} // namespace

void giveConfiguration(Zorbel sdk) {
  const SEL selector = "zorbelConfigIs:"_sel;
  const Strong<NSObject> host = hostDelegate();
  if (takesConfiguration(host, selector)) {
    const Complaint complaint = hand(host, selector, SBZorbelConfigHelper::filteredZorbelConfig());
    sdk.configApplied_message(complaint ? Applied::error : Applied::yes, complaint.get());
  }
}

void giveChangedConfiguration(Zorbel sdk, NSDictionary configuration) {
  const Strong<NSObject> host = hostDelegate();
  std::optional<Complaint> answered;
  // A host that takes both is given both, and the last one's word counts.
  for (const SEL selector : {"zorbelConfigChangedTo:"_sel, "zorbelConfigIs:"_sel}) {
    if (takesConfiguration(host, selector)) {
      answered = hand(host, selector, configuration);
    }
  }
  if (!answered) {
    sdk.configApplied_message(Applied::no, nullptr);
  } else {
    sdk.configApplied_message(*answered ? Applied::error : Applied::yes, answered->get());
  }
}

} // namespace qvsb
