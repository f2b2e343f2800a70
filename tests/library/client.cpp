#include "library/client.h"

#include <stdexcept>

#include "vexor/vexor.h"

const char* UseVexorUtils() {
  if (Split("C6; C8", ';', true).back() != "C8") return "a list came back wrong";
  try {
    GetIntegerList("0-99999999", ',', 0, false);
    return "an exception got lost";
  } catch (const std::length_error&) {
    return vexor::GetVersionText();
  }
}
