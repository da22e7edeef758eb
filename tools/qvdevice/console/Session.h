#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "AppRun.h"
#include "Feed.h"
#include "Items.h"
#include "Picture.h"
#include "Wishes.h"

namespace qvdevice {

/// What the people at the pages do with one app, from its start to its end, and what they are shown of it.
class Session {
public:
  Session(Wishes& wishes, Feed& feed, Picture& picture, const ContainerWatch& watch)
      : wishes_(wishes), feed_(feed), picture_(picture), watch_(watch) {}
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// To be called in the app's run; answers how the app was ended, nothing when it ended by itself. `started` is
  /// called once, when it can be used.
  std::optional<Outcome> run(AppRun& run, AppProcess& app, Report& report, AppProcess::Clock::duration limit,
                             const std::function<void()>& started);

  /// A record of the app, which may tell of something that is to be shown.
  void heard(const nlohmann::ordered_json& record);

  /// Whether the console is to end.
  bool wantsEnd() const { return endings_ > 0 || wishes_.wantsEnd(); }

private:
  struct Tools; // the run and what belongs to it

  std::optional<Outcome> serve(const Tools& tools);
  std::optional<Outcome> perform(const Tools& tools, const Event& event);
  std::optional<Outcome> performOnExtension(const Tools& tools, const Event& event);
  std::optional<Outcome> withoutAnswer(const Tools& tools);
  std::optional<Outcome> endConsole(const Tools& tools);
  bool look(const Tools& tools);
  bool lookAt(const Tools& tools, const std::string& what);
  bool takePicture(const Tools& tools);
  void lookAtExtension(const Tools& tools);

  Wishes& wishes_;
  Feed& feed_;
  Picture& picture_;
  const ContainerWatch& watch_;
  int endings_ = 0; // signals that want the console to end
  bool changed_ = true;
  enum class Extension { kNone, kStarted, kShown } extension_ = Extension::kNone;
};

/// Tells the pages which items the container holds, with their protection classes.
void tellItems(Feed& feed, const ContainerWatch& watch);

} // namespace qvdevice
