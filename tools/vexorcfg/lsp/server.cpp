#include "server.h"

#include <algorithm>
#include <exception>
#include <ostream>
#include <thread>
#include <utility>

#include "features.h"
#include "message_stream.h"
#include "vexor/util/version.h"

namespace tools::vexorcfg::lsp {
namespace {

using vexor::TextRange;

constexpr int kIncremental = 2;  // a kind of synchronisation of the protocol

Json MakeCapabilities(const Client& client) {
  const bool is_utf8 = client.encoding == PositionEncoding::kUtf8;
  return {{"positionEncoding", is_utf8 ? "utf-8" : "utf-16"},
          {"textDocumentSync",
           {{"openClose", true}, {"change", kIncremental}, {"save", {{"includeText", false}}}}},
          {"completionProvider", {{"triggerCharacters", {"<", "/", "\"", ":", ";", " "}}}},
          {"hoverProvider", true},
          {"codeActionProvider", {{"codeActionKinds", ListCodeActionKinds()}}},
          {"documentSymbolProvider", true},
          {"foldingRangeProvider", true}};
}

bool IsId(const Json& json) { return json.is_string() || json.is_number_integer(); }

void ApplyChange(TextDocument& text, const Json& change) {
  const auto& replacement = change.at("text").get_ref<const std::string&>();
  const auto range = change.find("range");
  const TextRange span = range == change.end() || range->is_null()
                             ? TextRange{.begin = 0, .end = text.text().size()}
                             : ReadRange(*range, text);
  text.Replace(span.begin, span.end, replacement);
}

}  // namespace

struct Server::Method {
  std::string_view name;
  bool is_request;
  Json (Server::*run)(const Json& params);
};

template <Json (*kMake)(OpenDocument& document, const Client& client, const Json& params)>
Json Server::Ask(const Json& params) {
  return kMake(DocumentOf(params), client_, params);
}

const Server::Method* Server::FindMethod(std::string_view name) {
  static constexpr Method kMethods[] = {
      {"initialize", true, &Server::Initialize},
      {"initialized", false, &Server::Ignore},
      {"shutdown", true, &Server::Shutdown},
      {"exit", false, &Server::Exit},
      {"textDocument/didOpen", false, &Server::Open},
      {"textDocument/didChange", false, &Server::Change},
      {"textDocument/didSave", false, &Server::Ignore},
      {"textDocument/didClose", false, &Server::Close},
      {"textDocument/completion", true, &Server::Ask<MakeCompletion>},
      {"textDocument/hover", true, &Server::Ask<MakeHover>},
      {"textDocument/codeAction", true, &Server::Ask<MakeCodeActions>},
      {"textDocument/documentSymbol", true, &Server::Ask<MakeSymbols>},
      {"textDocument/foldingRange", true, &Server::Ask<MakeFoldingRanges>},
  };
  const auto* const found = std::ranges::find(kMethods, name, &Method::name);
  return found == std::end(kMethods) ? nullptr : found;
}

void Server::Take(const Message& message) {
  try {
    const Json& content = message.content;
    if (!message.fault.empty()) return SendError({}, kParseError, message.fault);
    if (!content.is_object()) return SendError({}, kInvalidRequest, "the message is no object");
    const bool has_method = !MethodOf(content).empty();
    const bool is_answer = content.contains("result") || content.contains("error");
    if (!has_method && is_answer) return;
    if (has_method && !content.contains("id")) return TakeNotification(content);
    const Json& id = MemberAt(content, "/id");
    if (!IsId(id)) return SendError({}, kInvalidRequest, "the id is neither number nor string");
    if (!has_method) return SendError(id, kInvalidRequest, "the message has no method");
    TakeRequest(content, id, message.is_cancelled);
  } catch (const std::exception& error) {  // not even an answer could be made
    Report("cannot answer", error);
  }
}

void Server::TakeRequest(const Json& content, const Json& id, bool is_cancelled) {
  Json result;
  try {
    result = Answer(content, is_cancelled);
  } catch (const RequestError& error) {
    return SendError(id, error.code(), error.what());
  } catch (const Json::exception& error) {
    return SendError(id, kInvalidParams, error.what());
  } catch (const std::exception& error) {
    return SendError(id, kInternalError, error.what());
  }
  WriteMessage(out_, {{"jsonrpc", "2.0"}, {"id", id}, {"result", std::move(result)}});
}

Json Server::Answer(const Json& content, bool is_cancelled) {
  if (is_cancelled) throw RequestError(kRequestCancelled, "cancelled");
  const std::string_view name = MethodOf(content);
  const bool is_first = name == "initialize";
  if (phase_ == Phase::kNew && !is_first) {
    throw RequestError(kServerNotInitialized, "the first request must be initialize");
  }
  if (phase_ == Phase::kShutDown) throw RequestError(kInvalidRequest, "the server was shut down");
  if (phase_ == Phase::kRunning && is_first) {
    throw RequestError(kInvalidRequest, "the server is initialized already");
  }
  const Method* const method = FindMethod(name);
  if (method == nullptr || !method->is_request) {
    throw RequestError(kMethodNotFound, "no request " + std::string(name));
  }
  return (this->*method->run)(MemberAt(content, "/params"));
}

void Server::TakeNotification(const Json& content) {
  const Method* const method = FindMethod(MethodOf(content));
  if (method == nullptr || method->is_request) return;
  if (phase_ != Phase::kRunning && method->run != &Server::Exit) return;
  try {
    (this->*method->run)(MemberAt(content, "/params"));
  } catch (const std::exception& error) {
    Report(method->name, error);
  }
}

void Server::SendError(const Json& id, ErrorCode code, std::string_view message) {
  const Json error = {{"code", static_cast<int>(code)}, {"message", message}};
  WriteMessage(out_, {{"jsonrpc", "2.0"}, {"id", id}, {"error", error}});
}

void Server::Report(std::string_view subject, const std::exception& error) {
  log_ << "vexorcfg lsp: " << subject << ": " << error.what() << '\n' << std::flush;
}

Json Server::Initialize(const Json& params) {
  client_ = ReadClient(params);
  phase_ = Phase::kRunning;
  return {{"capabilities", MakeCapabilities(client_)},
          {"serverInfo", {{"name", "vexorcfg"}, {"version", vexor::GetVersionText()}}}};
}

Json Server::Shutdown(const Json& /*params*/) {
  phase_ = Phase::kShutDown;
  return nullptr;
}

Json Server::Exit(const Json& /*params*/) {
  was_shut_down_ = phase_ == Phase::kShutDown;
  phase_ = Phase::kEnded;
  return nullptr;
}

Json Server::Ignore(const Json& /*params*/) { return nullptr; }

OpenDocument* Server::FindDocument(const Json& params) {
  const Json& uri = params.at("textDocument").at("uri");
  const auto found =
      std::ranges::find(documents_, uri.get_ref<const std::string&>(), &OpenDocument::uri);
  return found == documents_.end() ? nullptr : &*found;
}

OpenDocument& Server::DocumentOf(const Json& params) {
  OpenDocument* const document = FindDocument(params);
  if (document == nullptr) throw RequestError(kInvalidParams, "the document is not open");
  return *document;
}

Json Server::Open(const Json& params) {
  const Json& item = params.at("textDocument");
  OpenDocument opened = {.uri = item.at("uri").get<std::string>(),
                         .version = MemberAt(item, "/version"),
                         .text = {item.at("text").get<std::string>(), client_.encoding}};
  if (OpenDocument* const document = FindDocument(params)) {
    *document = std::move(opened);
  } else {
    documents_.push_back(std::move(opened));
  }
  return nullptr;
}

Json Server::Change(const Json& params) {
  OpenDocument& document = DocumentOf(params);
  document.findings.reset();
  document.is_published = false;
  document.version = MemberAt(params, "/textDocument/version");
  for (const Json& change : params.at("contentChanges")) ApplyChange(document.text, change);
  return nullptr;
}

Json Server::Close(const Json& params) {
  const OpenDocument& document = DocumentOf(params);
  const Json nothing = {{"uri", document.uri}, {"diagnostics", Json::array()}};
  documents_.erase(documents_.begin() + (&document - documents_.data()));
  SendNotification("textDocument/publishDiagnostics", nothing);
  return nullptr;
}

void Server::SendNotification(std::string_view method, Json params) {
  WriteMessage(out_, {{"jsonrpc", "2.0"}, {"method", method}, {"params", std::move(params)}});
}

bool Server::PublishNext() {
  const auto next = std::ranges::find(documents_, false, &OpenDocument::is_published);
  if (next == documents_.end()) return false;
  next->is_published = true;  // also if that fails, so that it is not tried for ever
  try {
    SendNotification("textDocument/publishDiagnostics", MakeDiagnostics(*next, client_));
  } catch (const std::exception& error) {
    Report("cannot check", error);
  }
  return true;
}

int Serve(std::istream& in, std::ostream& out, std::ostream& log) {
  MessageReader reader(in);
  MessageQueue queue;
  const std::jthread filler([&] { FillQueue(reader, queue); });
  Server server(out, log);
  while (!server.HasEnded()) {
    if (queue.IsEmpty() && server.PublishNext()) continue;
    const std::optional<Message> message = queue.Take();
    if (!message) break;
    server.Take(*message);
  }
  return server.ExitStatus();
}

}  // namespace tools::vexorcfg::lsp
