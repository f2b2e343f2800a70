#include "message_queue.h"

#include <algorithm>
#include <new>
#include <string>
#include <utility>

#include "common/utf8.h"

namespace tools::vexorcfg::lsp {
namespace {

constexpr std::size_t kMostMessages = 4096;
constexpr std::size_t kMostBytes = std::size_t{64} << 20U;  // one larger message fits alone

const Json* FindMember(const Json& content, const char* name) {
  if (!content.is_object()) return nullptr;
  const auto found = content.find(name);
  return found == content.end() ? nullptr : &*found;
}

// Editors send files that are not UTF-8 as they are. Each foreign byte becomes one character of one
// byte, so that the places of all others stay right.
std::string ReplaceForeignBytes(std::string_view body) {
  std::string replaced;
  while (!body.empty()) {
    const std::size_t length = LengthOfUtf8(body);
    replaced += length == 0 ? "?" : body.substr(0, length);
    body.remove_prefix(std::max<std::size_t>(1, length));
  }
  return replaced;
}

}  // namespace

std::string_view MethodOf(const Json& content) {
  const Json* const method = FindMember(content, "method");
  return method != nullptr && method->is_string() ? method->get_ref<const std::string&>()
                                                  : std::string_view();
}

Message ParseMessage(const Frame& frame) {
  Message message{.content = {}, .fault = frame.fault, .bytes = frame.body.size()};
  if (frame.kind == Frame::Kind::kBody) {
    message.content = Json::parse(frame.body, nullptr, false);
    if (message.content.is_discarded()) {
      message.content = Json::parse(ReplaceForeignBytes(frame.body), nullptr, false);
    }
    if (message.content.is_discarded()) message.fault = "the message is not JSON";
  }
  return message;
}

void MessageQueue::Push(Message message) {
  std::unique_lock lock(mutex_);
  if (MethodOf(message.content) == "$/cancelRequest") return Cancel(message.content);
  changed_.wait(lock, [&] {
    return messages_.empty() ||
           (messages_.size() < kMostMessages && bytes_ + message.bytes <= kMostBytes);
  });
  bytes_ += message.bytes;
  messages_.push_back(std::move(message));
  changed_.notify_all();
}

void MessageQueue::Cancel(const Json& content) {
  const Json* const params = FindMember(content, "params");
  const Json* const id = params == nullptr ? nullptr : FindMember(*params, "id");
  if (id == nullptr || id->is_structured()) return;
  for (Message& message : messages_) {
    const Json* const waiting = FindMember(message.content, "id");
    if (waiting != nullptr && *waiting == *id) message.is_cancelled = true;
  }
}

void MessageQueue::Close() {
  const std::lock_guard lock(mutex_);
  is_closed_ = true;
  changed_.notify_all();
}

std::optional<Message> MessageQueue::Take() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return is_closed_ || !messages_.empty(); });
  if (messages_.empty()) return std::nullopt;
  Message message = std::move(messages_.front());
  messages_.pop_front();
  bytes_ -= message.bytes;
  changed_.notify_all();
  return message;
}

bool MessageQueue::IsEmpty() {
  const std::lock_guard lock(mutex_);
  return messages_.empty();
}

void FillQueue(MessageReader& reader, MessageQueue& queue) {
  try {
    for (Frame frame = reader.Read(); frame.kind != Frame::Kind::kEnd; frame = reader.Read()) {
      Message message;
      try {
        message = ParseMessage(frame);
      } catch (const std::bad_alloc&) {
        message.fault = "not enough memory for the message";
      }
      const bool is_last = MethodOf(message.content) == "exit";
      queue.Push(std::move(message));
      if (is_last) break;
    }
    queue.Close();
  } catch (const std::bad_alloc&) {
    queue.Close();  // the session ends as if the client had gone
  }
}

}  // namespace tools::vexorcfg::lsp
