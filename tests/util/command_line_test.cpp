#include "vexor/util/command_line.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// An argument vector of writable texts, as an entry point receives it.
struct Arguments {
  explicit Arguments(std::vector<std::string> list) : texts(std::move(list)) {
    for (std::string& text : texts) pointers.push_back(text.data());
  }
  char** Begin() { return pointers.data(); }
  char** End() { return pointers.data() + pointers.size(); }

  std::vector<std::string> texts;
  std::vector<char*> pointers;
};

TEST(CommandLine, IgnoresCaseOnlyInHasCmdOption) {
  Arguments arguments({"prog", "-T", "5", "-x"});
  EXPECT_TRUE(hasCmdOption(arguments.Begin(), arguments.End(), "-t"));
  EXPECT_TRUE(hasCmdOption(arguments.Begin(), arguments.End(), "-X"));
  EXPECT_FALSE(hasCmdOption(arguments.Begin(), arguments.End(), "-tt"));
  EXPECT_FALSE(hasCmdOption(arguments.Begin(), arguments.Begin(), "-t"));

  EXPECT_EQ(getCmdOption(arguments.Begin(), arguments.End(), "-T"), arguments.pointers[2]);
  EXPECT_EQ(getCmdOption(arguments.Begin(), arguments.End(), "prog"), arguments.pointers[1]);
  EXPECT_EQ(getCmdOption(arguments.Begin(), arguments.End(), "-t"), nullptr);
  EXPECT_EQ(getCmdOption(arguments.Begin(), arguments.End(), "-x"), nullptr) << "nothing follows";
  EXPECT_EQ(getCmdOption(arguments.Begin(), arguments.Begin(), "-T"), nullptr);
}

TEST(CommandLine, FindsEveryValue) {
  Arguments arguments({"prog", "-f", "a", "-F", "c", "-f", "-f"});
  const std::vector<const char*> values = getCmdOptions(arguments.Begin(), 7, "-f");
  EXPECT_EQ(values, (std::vector<const char*>{arguments.pointers[2], arguments.pointers[6]}));
  EXPECT_TRUE(getCmdOptions(arguments.Begin(), 2, "-f").empty());
  EXPECT_TRUE(getCmdOptions(arguments.Begin(), 0, "-f").empty());
  EXPECT_TRUE(getCmdOptions(arguments.Begin(), -1, "-f").empty());
}

}  // namespace
