// Writes and reads a record whose texts are the lines of the input, in turn.
#include "config/round_trip.h"

#include <memory>

#include "fuzz.h"
#include "vexor/config/reader.h"
#include "vexor/config/writer.h"

namespace {

class LineSource {
 public:
  explicit LineSource(std::string_view input) : lines_(SplitLines(input)) {}

  // The texts repeat. Sizes of lists have a counter of their own: with a common one, each place
  // would always get the same text.
  std::string Text() { return lines_[next_++ % lines_.size()]; }
  std::size_t Below(std::size_t bound) {
    const std::string& line = lines_[turn_++ % lines_.size()];
    return line.empty() ? turn_ % bound : static_cast<unsigned char>(line.front()) % bound;
  }

 private:
  std::vector<std::string> lines_;
  std::size_t next_ = 0;
  std::size_t turn_ = 0;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  LineSource source(AsText(data, size));
  const auto written = std::make_unique<_XML_FULL_CFG>();
  vexor::RecordFiller(source).Fill(*written);
  const std::string document = vexor::FormatXMLConfig(*written);
  const auto read = std::make_unique<_XML_FULL_CFG>();
  ResetVexorXmlConfiguration(*read);
  Require(VexorConfigParser().ReadXMLPar(HoldInFile(document), read.get(), true, true),
          "what is written is read", document);
  const std::string places = vexor::CarryCheck::Find(*written, *read);
  Require(places.empty(), "what is written is read back", places);
  Require(vexor::FormatXMLConfig(*read).size() <= document.size(), "nothing is added");
  return 0;
}
