// A device with other apps on it: two that open documents and two with share extensions.
#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

inline void writeBundle(const std::filesystem::path& bundle, const std::string& identifier, const std::string& name,
                        const std::string& more) {
  std::filesystem::create_directories(bundle);
  std::ofstream(bundle / "Info.plist") << R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0"><dict><key>CFBundleIdentifier</key><string>)"
                                       << identifier << "</string><key>CFBundleDisplayName</key><string>" << name
                                       << "</string>" << more << "</dict></plist>\n";
}

inline void installOtherApps(const std::filesystem::path& device) {
  const std::string documents = "<key>CFBundleDocumentTypes</key><array><dict><key>LSItemContentTypes</key><array>"
                                "<string>public.data</string></array></dict></array>";
  const std::string sharing = "<key>NSExtension</key><dict><key>NSExtensionPointIdentifier</key>"
                              "<string>com.apple.share-services</string></dict>";
  const std::filesystem::path apps = device / "Apps";
  writeBundle(apps / "com.example.mail", "com.example.mail", "Example Mail", documents);
  writeBundle(apps / "org.other.reader", "org.other.reader", "Other Reader", documents);
  writeBundle(apps / "com.example.board", "com.example.board", "Board", "");
  writeBundle(apps / "com.example.board/PlugIns/Pin.appex", "com.example.board.pin", "Pin", sharing);
  writeBundle(apps / "org.other.social", "org.other.social", "Social", "");
  writeBundle(apps / "org.other.social/PlugIns/Post.appex", "org.other.social.post", "Post", sharing);
}

/// What has left the app since it was last looked, each file with its contents, by its path on the device. Looks at the
/// device's folder alone, and empties it of what it found.
inline std::map<std::string, std::string> takeWhatLeft(const std::filesystem::path& device) {
  std::map<std::string, std::string> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(device)) {
    const std::string path = entry.path().lexically_relative(device);
    if (!entry.is_regular_file() || (path.rfind("Outbox/", 0) != 0 && path.rfind("Print/", 0) != 0 &&
                                     path.find("/Documents/Inbox/") == std::string::npos))
      continue;
    std::ifstream stream(entry.path());
    files[path] = std::string(std::istreambuf_iterator<char>(stream), {});
  }
  for (const auto& [path, text] : files)
    std::filesystem::remove(device / path);
  return files;
}
