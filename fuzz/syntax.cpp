// Parses and checks option texts. The first byte selects the syntax, the rest is the text.
#include "families.h"
#include "fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  FuzzFamily(Families()[data[0] % Families().size()], AsText(data, size).substr(1));
  return 0;
}
