// Finds what two sequences have in common.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace tools::vexorcfg {

inline constexpr std::size_t kNoPartner = static_cast<std::size_t>(-1);

// Returns for each item of `a` the index of its partner in `b`, which is equal, or kNoPartner. The
// partners are in ascending order. Takes time linear in the sequences; in return, fewer items of
// repetitive sequences may be matched than possible.
std::vector<std::size_t> MatchSequences(const std::vector<std::string_view>& a,
                                        const std::vector<std::string_view>& b);

}  // namespace tools::vexorcfg
