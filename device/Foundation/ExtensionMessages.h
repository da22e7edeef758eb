// What a host and an extension say to each other: one archived dictionary after the other, each behind its length.
#pragma once

#import <Foundation/Foundation.h>

#include <cstddef>
#include <string>

namespace qvdevice {

/// The bytes of a message. Raises what Foundation's archiver raises for what cannot be archived.
NSData *bytesOfMessage(NSDictionary *message);

/// Whether whoever gets these bytes of a message will take them: archived is more than what is brought to life again.
bool willBeUnderstood(NSData *bytes);

/// Sends bytes whole; false when nobody is there to take them.
bool sendBytes(int socket, NSData *bytes);

/// Takes a stream of bytes apart.
class MessageReader {
public:
  enum class Result { kMessage, kMore, kMalformed };

  void feed(const char *bytes, std::size_t length) { received_.append(bytes, length); }

  /// The next message, autoreleased: a dictionary with a text under "message". Of what comes from another process only
  /// the classes that requests and answers consist of are brought to life. After kMalformed there is nothing more to
  /// read.
  Result next(NSDictionary **message);

private:
  std::string received_;
};

/// Whether the object is an array of NSExtensionItem.
bool areExtensionItems(id object);

} // namespace qvdevice
