// The cells of one row, found when they are asked for.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "logging/log_scan.h"

namespace vexor {

class LogCells {
 public:
  static constexpr std::size_t kUnknownWidth = 0;

  // Begins with the cells of this text, which has a margin behind it (log_scan.h). `quoted` tells
  // whether a cell may be quoted, `returns` whether the row has a carriage return in its line end.
  void Start(std::string_view text, std::size_t width, bool quoted, bool returns);

  std::size_t Width();

  // Empty from the width on. Valid until `Start`.
  std::string_view At(std::size_t position);

  // Faster for rows without quotes.
  std::string_view Last();

 private:
  struct Place {
    std::string_view text;
    bool as_quoted = false;  // the text has its quotes, which are to be resolved
  };

  [[nodiscard]] bool IsDone() const { return next_ > text_.size(); }
  void LocateNext();
  void LocateQuoted();
  std::string_view Resolve(std::string_view quoted);

  std::string_view text_;
  std::size_t width_ = kUnknownWidth;
  bool quoted_ = false;
  bool returns_ = false;
  std::size_t next_ = 0;  // where the next cell begins
  CommaSearch commas_;    // from there on
  std::vector<Place> places_;
  std::string resolved_;  // never grows while texts in it are in use
};

}  // namespace vexor
