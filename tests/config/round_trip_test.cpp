// Writes records of random texts and reads them back.
#include "config/round_trip.h"

#include <gtest/gtest.h>

#include <random>

#include "config/config_files.h"
#include "platform/test_disk.h"
#include "temporary_folder.h"
#include "vexor/config/writer.h"

namespace vexor {
namespace {

class RandomSource {
 public:
  explicit RandomSource(unsigned seed) : random_(seed) {}

  std::size_t Below(std::size_t bound) { return random_() % bound; }

  std::string Text() {
    using std::operator""sv;
    constexpr std::string_view kPieces[] = {"a",
                                            "B=1;",
                                            "-",
                                            "]]>",
                                            "&",
                                            "&amp;",
                                            "&#65;",
                                            "<b/>",
                                            "\"",
                                            "'",
                                            "\r",
                                            "\n",
                                            "\t",
                                            " ",
                                            "  \n",
                                            "\x01",
                                            "\x1f\x0b",
                                            "\xff\x80\xb5",
                                            "\xef\xbb\xbf",
                                            "\0"sv};
    std::string text;
    for (std::size_t i = Below(7); i > 0; --i) text += kPieces[Below(std::size(kPieces))];
    return text;
  }

 private:
  std::mt19937 random_;
};

TEST(RoundTrip, ReadingAWrittenFileRestoresTheRecords) {
  for (unsigned seed = 0; seed < 30; ++seed) {
    RandomSource source(seed);
    _XML_FULL_CFG written;
    RecordFiller(source).Fill(written);
    EXPECT_EQ(CarryCheck::Find(written, ReadDocument(FormatXMLConfig(written))), "") << seed;
  }
}

TEST(RoundTrip, KeepsTheOldFileWhenTheDiskIsFull) {
  const TemporaryFolder folder;
  WriteBytes(folder / "lab.xml", "old");
  _XML_FULL_CFG cfg;
  const TestDisk disk;
  TestDisk::LimitSpace(10'000);
  EXPECT_FALSE(WriteXMLConfig((folder / "lab.xml").c_str(), cfg, false));
  EXPECT_EQ(ReadBytes(folder / "lab.xml"), "old");
  TestDisk::LimitSpace(TestDisk::kUnlimited);
  TestDisk::LimitWrite(1000);
  EXPECT_TRUE(WriteXMLConfig((folder / "lab.xml").c_str(), cfg, false));
  EXPECT_EQ(ReadBytes(folder / "lab.xml"), FormatXMLConfig(cfg));
}

}  // namespace
}  // namespace vexor
