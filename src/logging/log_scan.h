// Searches the bytes of a log, sixteen at a time on processors with SSE2.
//
// These functions may load up to `kScanMargin` bytes after the end that they are given, whatever
// they hold, so that the last bytes need no loop of their own. Buffers must be that much longer.
#pragma once

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vexor {

inline constexpr std::size_t kScanBlock = 16;
inline constexpr std::size_t kScanMargin = kScanBlock;

// What a search found before it stopped. Searches add to it.
struct Passed {
  std::size_t commas = 0;
  bool beyond_ascii = false;
};

// The same for any processor. Tests compare the faster functions below with these.
namespace portable {

inline std::uint32_t FindInBlock(const char* block, char wanted) {
  std::uint32_t found = 0;
  for (std::uint32_t i = 0; i < kScanBlock; ++i) found |= (block[i] == wanted ? 1U : 0U) << i;
  return found;
}

const char* FindStop(const char* at, const char* end, Passed& passed);

}  // namespace portable

// Bit i of the result is set if byte i of the block is the one wanted.
inline std::uint32_t FindInBlock(const char* block, char wanted) {
#if defined(__SSE2__)
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block));
  return static_cast<std::uint32_t>(
      _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(wanted))));
#else
  return portable::FindInBlock(block, wanted);
#endif
}

// Returns the first line feed, quote or NUL byte, or `end` if there is none.
const char* FindStop(const char* at, const char* end, Passed& passed);

// Finds the commas of a text, one after another.
class CommaSearch {
 public:
  CommaSearch() = default;
  explicit CommaSearch(std::string_view text, std::size_t from = 0)
      : text_(text), block_(from), found_(from < text.size() ? Look() : 0) {}

  // Returns the place of the next comma, or the size of the text if there is none.
  std::size_t Next() {
    while (found_ == 0) {
      block_ += kScanBlock;
      if (block_ >= text_.size()) return text_.size();
      found_ = Look();
    }
    const std::size_t at = block_ + static_cast<std::size_t>(std::countr_zero(found_));
    found_ &= found_ - 1;
    return at < text_.size() ? at : text_.size();
  }

 private:
  [[nodiscard]] std::uint32_t Look() const { return FindInBlock(text_.data() + block_, ','); }

  std::string_view text_;
  std::size_t block_ = 0;
  std::uint32_t found_ = 0;  // commas of the block that were not returned yet, one bit each
};

// Whether the text is UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
bool IsUtf8(std::string_view text);

}  // namespace vexor
