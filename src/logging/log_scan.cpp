#include "logging/log_scan.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace vexor {

namespace {

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

// Returns the size of the UTF-8 character that the text begins with, 0 if it begins with none.
std::size_t MeasureCharacter(std::string_view text) {
  const auto first = static_cast<unsigned char>(text[0]);
  if (first < 0x80U) return 1;
  if (text.size() < 2 || !IsContinuation(text[1])) return 0;
  const auto second = static_cast<unsigned char>(text[1]);
  if (first < 0xC2U) return 0;
  if (first < 0xE0U) return 2;
  if (text.size() < 3 || !IsContinuation(text[2])) return 0;
  if (first < 0xF0U) {
    const bool overlong = first == 0xE0U && second < 0xA0U;
    const bool surrogate = first == 0xEDU && second >= 0xA0U;
    return overlong || surrogate ? 0 : 3;
  }
  if (text.size() < 4 || !IsContinuation(text[3]) || first > 0xF4U) return 0;
  const bool overlong = first == 0xF0U && second < 0x90U;
  const bool too_large = first == 0xF4U && second >= 0x90U;
  return overlong || too_large ? 0 : 4;
}

}  // namespace

const char* portable::FindStop(const char* at, const char* end, Passed& passed) {
  for (; at < end; ++at) {
    if (*at == '\n' || *at == '"' || *at == '\0') return at;
    if (*at == ',') ++passed.commas;
    if (static_cast<unsigned char>(*at) >= 0x80U) passed.beyond_ascii = true;
  }
  return end;
}

#if defined(__SSE2__)

namespace {

// Returns a mask of the first `count` bytes of a block; `count` is at most 16.
__m128i KeepFirst(std::ptrdiff_t count) {
  alignas(kScanBlock) static constexpr auto kKeep = [] {
    std::array<char, 2 * kScanBlock> keep = {};
    std::fill_n(keep.begin(), kScanBlock, static_cast<char>(-1));
    return keep;
  }();
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(kKeep.data() + kScanBlock -
                                                          static_cast<std::size_t>(count)));
}

std::size_t SumBytes(__m128i bytes) {
  const __m128i sums = _mm_sad_epu8(bytes, _mm_setzero_si128());
  return static_cast<std::size_t>(_mm_cvtsi128_si64(sums)) +
         static_cast<std::size_t>(_mm_cvtsi128_si64(_mm_srli_si128(sums, 8)));
}

}  // namespace

const char* FindStop(const char* at, const char* end, Passed& passed) {
  constexpr int kMostBlocks = 255;  // each of the sixteen counters of commas is a byte
  const __m128i line_feed = _mm_set1_epi8('\n');
  const __m128i quote = _mm_set1_epi8('"');
  const __m128i comma = _mm_set1_epi8(',');
  const __m128i nul = _mm_setzero_si128();
  __m128i high = nul;
  if (at >= end) return end;
  while (true) {
    __m128i commas = nul;
    for (int i = 0; i < kMostBlocks; ++i, at += kScanBlock) {
      const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
      const __m128i stops =
          _mm_or_si128(_mm_cmpeq_epi8(bytes, line_feed),
                       _mm_or_si128(_mm_cmpeq_epi8(bytes, quote), _mm_cmpeq_epi8(bytes, nul)));
      const auto found = static_cast<std::uint32_t>(_mm_movemask_epi8(stops));
      const __m128i are_commas = _mm_cmpeq_epi8(bytes, comma);
      if (found == 0 && end - at > static_cast<std::ptrdiff_t>(kScanBlock)) {
        commas = _mm_sub_epi8(commas, are_commas);
        high = _mm_or_si128(high, bytes);
        continue;
      }
      // Bit 16 is the stop if the block has none.
      const std::ptrdiff_t count = std::min<std::ptrdiff_t>(
          end - at, std::countr_zero(found | std::uint32_t{1} << kScanBlock));
      const __m128i kept = KeepFirst(count);
      commas = _mm_sub_epi8(commas, _mm_and_si128(are_commas, kept));
      high = _mm_or_si128(high, _mm_and_si128(bytes, kept));
      passed.commas += SumBytes(commas);
      passed.beyond_ascii = passed.beyond_ascii || _mm_movemask_epi8(high) != 0;
      return at + count;
    }
    passed.commas += SumBytes(commas);
  }
}

#else

const char* FindStop(const char* at, const char* end, Passed& passed) {
  return portable::FindStop(at, end, passed);
}

#endif

bool IsUtf8(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  std::uint64_t word = 0;
  while (!text.empty()) {
    if (text.size() >= sizeof word) {
      std::memcpy(&word, text.data(), sizeof word);
      if ((word & kHighBits) == 0) {
        text.remove_prefix(sizeof word);
        continue;
      }
    }
    const std::size_t size = MeasureCharacter(text);
    if (size == 0) return false;
    text.remove_prefix(size);
  }
  return true;
}

}  // namespace vexor
