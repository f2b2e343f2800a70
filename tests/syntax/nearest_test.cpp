#include "syntax/nearest.h"

#include <gtest/gtest.h>

#include <functional>
#include <span>
#include <string>

namespace {

TEST(Nearest, EditsAreCounted) {
  const std::string name(vexor::kLongestCompared, 'n');
  struct Case {
    std::string from;
    std::string to;
    std::size_t edits;
  };
  const Case cases[] = {
      {"Random", "rANDOM", 0},
      {"Randon", "Random", 1},
      {"Radnom", "Random", 1},  // neighbours swapped
      {"adnR", "Rand", 3},
      {"", "Random", 6},
      {"Random", "", 6},
      {name, name, 0},
      {name + "text beyond", name, 0},
      {name, name + "beyond", 6},
      {"", std::string(1000, 'n'), 1000},
  };
  for (const Case& row : cases)
    EXPECT_EQ(vexor::CountEdits(row.from, row.to), row.edits) << row.from;
}

TEST(Nearest, NamesOfAnyLengthAreCompared) {
  const std::string names[] = {std::string(1000, 'x'), "Random", "Rando"};
  const auto nearest = [](std::span<const std::string> rows) {
    return vexor::FindNearest("Randomm", rows, std::identity());
  };
  EXPECT_EQ(nearest(std::span(names)), "Random");
  EXPECT_EQ(nearest(std::span(names, 1)), names[0]) << "a distant name is the nearest of one";
  EXPECT_EQ(nearest(std::span(names, 0)), "");
}

}  // namespace
