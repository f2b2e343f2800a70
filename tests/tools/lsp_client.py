"""A client of the language server, for tests and measurements."""

import json
import subprocess


class Client:
    def __init__(self, program, capabilities=None, options=None):
        self.process = subprocess.Popen([program, "lsp", "--stdio"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE)
        self.next_id = 0
        self.findings = {}  # URI: (version, diagnostics)
        self.capabilities = self.request("initialize", {
            "capabilities": capabilities or {}, "initializationOptions": options})["capabilities"]
        self.notify("initialized", {})

    def send(self, message):
        body = json.dumps({"jsonrpc": "2.0", **message}, ensure_ascii=False).encode()
        self.process.stdin.write(b"Content-Length: %d\r\n\r\n" % len(body) + body)
        self.process.stdin.flush()

    def receive(self):
        """Returns the next message; keeps findings."""
        length = None
        while line := self.process.stdout.readline().strip():
            length = int(line.split(b":")[1])
        if length is None:
            raise EOFError("the server has gone")
        message = json.loads(self.process.stdout.read(length))
        if message.get("method") == "textDocument/publishDiagnostics":
            params = message["params"]
            self.findings[params["uri"]] = (params.get("version"), params["diagnostics"])
        return message

    def notify(self, method, params):
        self.send({"method": method, "params": params})

    def start(self, method, params):
        """Sends a request and returns its id."""
        self.next_id += 1
        self.send({"id": self.next_id, "method": method, "params": params})
        return self.next_id

    def answer(self, number):
        while (message := self.receive()).get("id") != number:
            pass
        return message

    def request(self, method, params):
        message = self.answer(self.start(method, params))
        if "error" in message:
            raise RuntimeError(message["error"])
        return message["result"]

    def ask(self, method, uri, **params):
        return self.request("textDocument/" + method, {"textDocument": {"uri": uri}, **params})

    def open(self, uri, text, version=1):
        self.notify("textDocument/didOpen", {"textDocument": {
            "uri": uri, "languageId": "xml", "version": version, "text": text}})
        return self.wait_for_findings(uri, version)

    def change(self, uri, version, *changes):
        self.notify("textDocument/didChange", {
            "textDocument": {"uri": uri, "version": version}, "contentChanges": changes})

    def wait_for_findings(self, uri, version):
        while self.findings.get(uri, (None, None))[0] != version:
            self.receive()
        return self.findings[uri][1]

    def end(self):
        """Returns the exit status."""
        self.request("shutdown", None)
        self.notify("exit", None)
        self.process.stdin.close()
        return self.process.wait()
