// Keeps the first fault of a text while a parser reads it. A parser that takes a note serves both
// the exported function, which goes on with neutral values and never looks at the note, and the
// checker, which looks at nothing else.
#pragma once

#include <optional>
#include <string_view>

#include "syntax/fault.h"

namespace vexor {

class FaultNote {
 public:
  explicit FaultNote(std::string_view text) : text_(text) {}

  // `part` lies within the text; `what` is a literal.
  void At(std::string_view part, std::string_view what, const Expectation& expected) {
    if (fault_) return;
    const auto at = static_cast<std::size_t>(part.data() - text_.data());
    fault_ = Fault{.at = at, .what = what, .expected = expected};
  }

  // Takes over the fault that another note has found in a part of the text.
  void Within(std::string_view part, const Fault& fault) {
    At(part.substr(fault.at), fault.what, fault.expected);
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
