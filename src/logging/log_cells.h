// The cells of one row, found when they are asked for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "logging/log_scan.h"

namespace vexor {

class LogCells {
 public:
  static constexpr std::size_t kUnknownWidth = 0;

  enum class Quotes : std::uint8_t { kNone, kClosed, kOpen };

  // Begins with the cells of this text of less than 4 GB, which has a margin behind it
  // (log_scan.h). `quotes` tells whether a cell may be quoted, and the last one lacks its closing
  // quote; `returns` whether the row has a carriage return in its line end.
  void Start(std::string_view text, std::size_t width, Quotes quotes, bool returns);

  std::size_t Width();

  // Empty from the width on. Valid until `Start`.
  std::string_view At(std::size_t position);

  // The last one, found from the end.
  std::string_view Last();

 private:
  struct Place {
    const char* text = nullptr;
    std::uint32_t size = 0;
    bool as_quoted = false;  // the text has its quotes, which are to be resolved
  };

  [[nodiscard]] bool IsDone() const { return next_ > text_.size(); }
  [[nodiscard]] bool IsQuoted(std::size_t cell) const {
    return quotes_ != Quotes::kNone && cell < text_.size() && text_[cell] == '"';
  }
  void LocateUpTo(std::size_t position);
  void LocatePlain(std::size_t position);
  void LocateQuoted();
  std::string_view Resolve(std::string_view quoted);
  void Add(std::string_view text, bool as_quoted);

  std::string_view text_;
  std::size_t width_ = kUnknownWidth;
  Quotes quotes_ = Quotes::kNone;
  bool returns_ = false;
  std::size_t next_ = 0;  // where the next cell begins
  CommaSearch commas_;    // from there on
  std::vector<Place> places_;
  std::size_t located_ = 0;  // places of this row
  std::string resolved_;     // never grows while texts in it are in use
};

}  // namespace vexor
