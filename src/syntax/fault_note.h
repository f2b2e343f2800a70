// Keeps the first fault that a parser finds in a text. So one parser serves both the exported
// function, which ignores the note and uses neutral values, and the check, which uses only the
// note.
#pragma once

#include <cassert>
#include <optional>
#include <string_view>

#include "syntax/fault.h"

namespace vexor {

class FaultNote {
 public:
  explicit FaultNote(std::string_view text) : text_(text) {}

  // Notes a fault at the beginning of `part`, which must refer to the text. `what` is a literal.
  void At(std::string_view part, std::string_view what, const Expectation& expected,
          FaultKind kind = FaultKind::kForm) {
    assert(part.data() >= text_.data() && part.data() <= text_.data() + text_.size());
    if (fault_) return;
    const auto at = static_cast<std::size_t>(part.data() - text_.data());
    fault_ = Fault{.at = at, .what = what, .expected = expected, .kind = kind};
  }

  // Notes a fault that was found in a part of the text.
  void Within(std::string_view part, const Fault& fault) {
    At(part.substr(fault.at), fault.what, fault.expected, fault.kind);
  }

  void AtEnd(std::string_view what, const Expectation& expected) {
    At(text_.substr(text_.size()), what, expected);
  }

  [[nodiscard]] const std::optional<Fault>& First() const { return fault_; }

 private:
  std::string_view text_;
  std::optional<Fault> fault_;
};

}  // namespace vexor
