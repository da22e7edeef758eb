// The list that the open-in policy is asked about, entry by entry.
#include "policy/OpenInTargets.hpp"
#include "policy/Constants.hpp"

#include <string>
#include <vector>

#include <gtest/gtest.h>

TEST(OpenInTargets, AreNineteenInTheirOrderWithMailTwice) {
  const qvsb::AutoreleasePool pool;
  qvsb::publishConstants();
  std::vector<std::string> targets;
  for (const qvsb::NSString target : qvsb::openInTargets()) {
    targets.emplace_back(target.UTF8String());
  }
  EXPECT_EQ(targets, (std::vector<std::string>{
                         "com.apple.UIKit.activity.PostToFacebook",
                         "com.apple.UIKit.activity.PostToTwitter",
                         "com.apple.UIKit.activity.PostToWeibo",
                         "com.apple.UIKit.activity.Message",
                         "com.apple.UIKit.activity.Mail",
                         "com.apple.UIKit.activity.Print",
                         "com.apple.UIKit.activity.CopyToPasteboard",
                         "com.apple.UIKit.activity.AssignToContact",
                         "com.apple.UIKit.activity.SaveToCameraRoll",
                         "com.apple.UIKit.activity.AddToReadingList",
                         "com.apple.UIKit.activity.PostToFlickr",
                         "com.apple.UIKit.activity.PostToVimeo",
                         "com.apple.UIKit.activity.TencentWeibo",
                         "com.apple.UIKit.activity.AirDrop",
                         "com.apple.UIKit.activity.Quicklook",
                         "com.apple.UIKit.activity.Mail",
                         "com.apple.mobilenotes",
                         "com.apple.mobilenotes.SharingExtension",
                         "com.apple.mobileslideshow.StreamShareService",
                     }));
}

TEST(OpenInTargets, AreMadeOnce) {
  qvsb::publishConstants();
  EXPECT_EQ(&qvsb::openInTargets(), &qvsb::openInTargets());
}
