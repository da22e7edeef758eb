#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Failure.h"

namespace qvwrap {

/// What is said to the user: a sentence, what there is to know beside it by name, and what is to be done next.
struct Report {
  struct Line {
    std::string name;
    std::string text;
  };

  Status status = kDone;
  std::string headline;
  std::vector<Line> lines;
  std::string next;

  std::string text() const;
};

/// Puts the framework into an app. Throws Failure, with the app as it was; so do the others.
Report wrap(const std::filesystem::path& path, const std::filesystem::path& frameworkPath, bool maySpoilSignature);

/// Whether and how an app is wrapped.
Report check(const std::filesystem::path& path);

/// Undoes what wrap did.
Report remove(const std::filesystem::path& path, bool maySpoilSignature);

} // namespace qvwrap
