#include "vexor/util/version.h"

#include <gtest/gtest.h>

namespace {

TEST(Version, IsTheVersionThatFilesAreCheckedAgainst) {
  EXPECT_STREQ(vexor::GetVersionText(), "3.21.522.0");
}

}  // namespace
