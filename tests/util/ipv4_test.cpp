#include "vexor/util/ipv4.h"

#include <gtest/gtest.h>

namespace {

TEST(Ipv4, FourNumbersJoinedByPoints) {
  for (const char* good :
       {"192.168.1.1", "0.0.0.0", "255.255.255.255", "0x1F.1.2.0XfF", "001.2.3.4"}) {
    EXPECT_TRUE(IsIpv4Address(good)) << good;
  }
  for (const char* bad : {"", "1.2.3", "1.2.3.4.5", "10.0.0.256", "1..2.3.4", "1..2.3", ".1.2.3.4",
                          "1.2.3.4.", "1.2.3.", "1.2.3. 4", "1.2.3.-4", "1.2.3.x", "0x.1.2.3",
                          "1.2.3.0xDEADBEEF", "1.2.3.99999999999999999999"}) {
    EXPECT_FALSE(IsIpv4Address(bad)) << bad;
  }
}

}  // namespace
