// The messages of the basic road: as the log shows them, and as the queue service takes them.
#pragma once

#include "lumeq/view/Run.h"

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool {

/// What the lines of the log show of messages.
std::vector<ViewedMessage> MessagesOfLog(const std::vector<LogLine>& lines);

/// The part of a request's body that holds the message; npos if there is none.
struct EncodedPart {
    std::size_t begin = std::string::npos;
    std::size_t size = 0;
};
EncodedPart FindEncodedPart(const std::string& request);

/// Bytes that are no Base64 end the text.
std::string DecodeBase64(const std::string& base64);

} // namespace Zuvan::Lumeq::Tool
