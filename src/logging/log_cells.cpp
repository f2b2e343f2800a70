#include "logging/log_cells.h"

#include <algorithm>
#include <cassert>
#include <limits>

namespace vexor {

void LogCells::Start(std::string_view text, std::size_t width, Quotes quotes, bool returns) {
  assert(text.size() <= std::numeric_limits<std::uint32_t>::max());
  text_ = text;
  width_ = width;
  quotes_ = quotes;
  returns_ = returns;
  next_ = 0;
  commas_ = CommaSearch(text);
  located_ = 0;
  resolved_.clear();
}

std::size_t LogCells::Width() {
  if (width_ == kUnknownWidth) {
    LocateUpTo(text_.size());  // n bytes have at most n + 1 cells
    width_ = located_;
  }
  return width_;
}

std::string_view LogCells::At(std::size_t position) {
  if (located_ <= position) LocateUpTo(position);
  if (position >= located_) return {};
  Place& place = places_[position];
  if (place.as_quoted) {
    const std::string_view text = Resolve({place.text, place.size});
    place = {.text = text.data(), .size = static_cast<std::uint32_t>(text.size())};
  }
  return {place.text, place.size};
}

std::string_view LogCells::Last() {
  if (text_.size() >= kScanBlock && quotes_ != Quotes::kOpen) {
    const std::size_t block = text_.size() - kScanBlock;
    const std::uint32_t commas = FindInBlock(text_.data() + block, ',');
    // A comma after the last quote is not inside a quoted cell. In the masks, later bytes have
    // higher bits.
    if (commas > FindInBlock(text_.data() + block, '"')) {
      return text_.substr(block + static_cast<std::size_t>(std::bit_width(commas)));
    }
  }
  return At(Width() - 1);
}

void LogCells::Add(std::string_view text, bool as_quoted) {
  if (located_ == places_.size()) places_.resize(std::max(width_, 2 * located_ + 1));
  Place& place = places_[located_++];
  place.text = text.data();
  place.size = static_cast<std::uint32_t>(text.size());
  place.as_quoted = as_quoted;
}

void LogCells::LocateUpTo(std::size_t position) {
  while (located_ <= position && !IsDone()) {
    if (IsQuoted(next_)) {
      LocateQuoted();
    } else {
      LocatePlain(position);
    }
  }
}

// Stops at a quoted cell. Works on local copies, which the compiler can keep in registers.
void LogCells::LocatePlain(std::size_t position) {
  CommaSearch commas = commas_;
  std::size_t next = next_;
  do {
    const std::size_t comma = commas.Next();
    Add(text_.substr(next, comma - next), false);
    next = comma + 1;
  } while (located_ <= position && next <= text_.size() && !IsQuoted(next));
  next_ = next;
  commas_ = commas;
}

void LogCells::LocateQuoted() {
  const std::size_t size = text_.size();
  bool doubled = false;
  std::size_t close = std::min(text_.find('"', next_ + 1), size);
  while (close + 1 < size && text_[close + 1] == '"') {
    doubled = true;
    close = std::min(text_.find('"', close + 2), size);
  }
  const std::size_t end = close < size ? std::min(text_.find(',', close), size) : size;
  const bool stray = close + 1 < end;
  const std::string_view inner = text_.substr(next_ + 1, close - next_ - 1);
  const bool has_returns = returns_ && inner.find('\r') != std::string_view::npos;
  if (doubled || stray || has_returns) {
    Add(text_.substr(next_, end - next_), true);
  } else {
    Add(inner, false);
  }
  next_ = end + 1;
  commas_ = CommaSearch(text_, next_);
}

// Removes the quotes of a cell, as well as the carriage returns that the writer put before its line
// feeds.
std::string_view LogCells::Resolve(std::string_view quoted) {
  resolved_.reserve(text_.size());  // enough for all cells of the row
  const std::size_t begin = resolved_.size();
  bool inside = true;
  for (std::size_t i = 1; i < quoted.size(); ++i) {
    const char next = i + 1 < quoted.size() ? quoted[i + 1] : '\0';
    if (inside && quoted[i] == '"') {
      inside = next == '"';
      if (!inside) continue;
      ++i;
    } else if (inside && returns_ && quoted[i] == '\r' && next == '\n') {
      continue;
    }
    resolved_ += quoted[i];
  }
  assert(resolved_.size() <= text_.size());
  return std::string_view(resolved_).substr(begin);
}

}  // namespace vexor
