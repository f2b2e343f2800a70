// Splits one row into cells, only as far as they are asked for: most callers want a few columns.
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

  // Starts with a new row. The text is shorter than 4 GB and followed by `kScanMargin` bytes (see
  // log_scan.h). `width` is the number of cells, if known. `quotes` tells whether cells may be
  // quoted, and whether the last one lacks its closing quote. With `returns`, the row ends with a
  // carriage return and a line feed, and so do the lines inside its cells.
  void Start(std::string_view text, std::size_t width, Quotes quotes, bool returns);

  std::size_t Width();

  // Returns a cell without its quotes, empty if the row has none here. Valid until `Start`.
  std::string_view At(std::size_t position);

  // Returns the last cell. Mostly finds it from the end, without splitting the row.
  std::string_view Last();

 private:
  struct Place {
    const char* text = nullptr;
    std::uint32_t size = 0;
    bool as_quoted = false;  // the text still has its quotes and needs Resolve
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
  CommaSearch commas_;    // the commas from there on
  std::vector<Place> places_;
  std::size_t located_ = 0;  // entries of `places_` that belong to this row
  std::string resolved_;     // unquoted texts; never reallocated within a row, as cells refer to it
};

}  // namespace vexor
