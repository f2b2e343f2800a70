#include "logging/log_cells.h"

#include <algorithm>

namespace vexor {

void LogCells::Start(std::string_view text, std::size_t width, bool quoted, bool returns) {
  text_ = text;
  width_ = width;
  quoted_ = quoted;
  returns_ = returns;
  next_ = 0;
  commas_ = CommaSearch(text);
  places_.clear();
  resolved_.clear();
}

std::size_t LogCells::Width() {
  if (width_ == kUnknownWidth) {
    while (!IsDone()) LocateNext();
    width_ = places_.size();
  }
  return width_;
}

std::string_view LogCells::At(std::size_t position) {
  while (places_.size() <= position && !IsDone()) LocateNext();
  if (position >= places_.size()) return {};
  Place& place = places_[position];
  if (place.as_quoted) place = {.text = Resolve(place.text)};
  return place.text;
}

std::string_view LogCells::Last() {
  if (quoted_) return At(Width() - 1);
  return text_.substr(text_.rfind(',') + 1);  // from 0 on when there is none
}

void LogCells::LocateNext() {
  if (quoted_ && next_ < text_.size() && text_[next_] == '"') return LocateQuoted();
  const std::size_t comma = commas_.Next();
  places_.push_back({.text = text_.substr(next_, comma - next_)});
  next_ = comma + 1;
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
    places_.push_back({.text = text_.substr(next_, end - next_), .as_quoted = true});
  } else {
    places_.push_back({.text = inner});
  }
  next_ = end + 1;
  commas_ = CommaSearch(text_, next_);
}

std::string_view LogCells::Resolve(std::string_view quoted) {
  resolved_.reserve(text_.size());
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
  return std::string_view(resolved_).substr(begin);
}

}  // namespace vexor
