// A server of the Language Server Protocol for configurations.
#pragma once

#include <exception>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "common/json.h"
#include "message_queue.h"
#include "protocol.h"

namespace tools::vexorcfg::lsp {

// Answers messages, one at a time. Bad ones are answered with an error or, if they are
// notifications, ignored and reported in the log.
class Server {
 public:
  Server(std::ostream& out, std::ostream& log) : out_(out), log_(log) {}

  void Take(const Message& message);

  // Publishes the findings of one document whose text changed since. Returns whether there was one.
  bool PublishNext();

  // Whether the client said "exit".
  [[nodiscard]] bool HasEnded() const { return phase_ == Phase::kEnded; }

  // Returns the exit status that the protocol asks for: 0 if "shutdown" came before "exit".
  [[nodiscard]] int ExitStatus() const { return was_shut_down_ ? 0 : 1; }

  // For tests.
  [[nodiscard]] const std::vector<OpenDocument>& documents() const { return documents_; }

 private:
  enum class Phase { kNew, kRunning, kShutDown, kEnded };
  struct Method;

  static const Method* FindMethod(std::string_view name);
  void TakeRequest(const Json& content, const Json& id, bool is_cancelled);
  void TakeNotification(const Json& content);
  Json Answer(const Json& content, bool is_cancelled);
  void SendError(const Json& id, ErrorCode code, std::string_view message);
  void SendNotification(std::string_view method, Json params);
  void Report(std::string_view subject, const std::exception& error);

  OpenDocument* FindDocument(const Json& params);
  OpenDocument& DocumentOf(const Json& params);  // throws RequestError if it is not open

  // The methods. Those of notifications return null.
  Json Initialize(const Json& params);
  Json Shutdown(const Json& params);
  Json Exit(const Json& params);
  Json Open(const Json& params);
  Json Change(const Json& params);
  Json Close(const Json& params);
  Json Ignore(const Json& params);
  template <Json (*kMake)(OpenDocument& document, const Client& client, const Json& params)>
  Json Ask(const Json& params);

  std::ostream& out_;
  std::ostream& log_;
  Phase phase_ = Phase::kNew;
  bool was_shut_down_ = false;
  Client client_;
  std::vector<OpenDocument> documents_;
};

// Serves the client on the two streams until it says "exit" or `in` ends, and returns the exit
// status.
int Serve(std::istream& in, std::ostream& out, std::ostream& log);

}  // namespace tools::vexorcfg::lsp
