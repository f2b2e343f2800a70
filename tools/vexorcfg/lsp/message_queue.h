// Messages that wait for the server. A thread reads them from a stream, so that a request may be
// cancelled before the server comes to it.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <optional>
#include <string_view>

#include "common/json.h"
#include "message_stream.h"

namespace tools::vexorcfg::lsp {

struct Message {
  Json content;
  std::string_view fault = {};  // why there is no content
  bool is_cancelled = false;
  std::size_t bytes = 0;  // of the frame
};

// Returns the method of a request or notification; empty for anything else.
std::string_view MethodOf(const Json& content);

// Makes a message of a frame's body.
Message ParseMessage(const Frame& frame);

// One thread fills the queue, another one empties it.
class MessageQueue {
 public:
  // Waits while the queue is full, then adds the message. Cancels the request that a
  // "$/cancelRequest" names instead, if it is still in the queue.
  void Push(Message message);

  // Says that no message follows.
  void Close();

  // Waits for a message. Returns nothing after the last one.
  std::optional<Message> Take();

  [[nodiscard]] bool IsEmpty();

 private:
  void Cancel(const Json& content);

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Message> messages_;
  std::size_t bytes_ = 0;
  bool is_closed_ = false;
};

// Fills the queue with the messages of the stream, up to its end or the notification "exit", and
// closes it.
void FillQueue(MessageReader& reader, MessageQueue& queue);

}  // namespace tools::vexorcfg::lsp
