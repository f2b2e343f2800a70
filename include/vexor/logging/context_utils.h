// What a front end gives a log so that its auto-run entry follows the log.
#pragma once

#include <string>

#include "vexor/export.h"

// The front end derives from this class and hands an object to `VexorLogging::SetAutoRunInfo`. The
// log calls it after each move to a new file, on the thread that logged, and holds no lock
// meanwhile: the front end may log. It is not called for moves of the same log that its own lines
// cause during the call. What it throws leaves the call that logged; its line is logged already.
class VEXOR_EXPORT ContextUtils {
 public:
  ContextUtils() = default;
  ContextUtils(const ContextUtils&) = default;
  ContextUtils(ContextUtils&&) = default;
  ContextUtils& operator=(const ContextUtils&) = default;
  ContextUtils& operator=(ContextUtils&&) = default;
  virtual ~ContextUtils();

  // Writes the front end's auto-run entry; returns whether that succeeded. Without a front end:
  // writes the script and the flags, as one character, to standard output and returns false.
  virtual bool CreateAutoRun(std::string script, unsigned char flags);
};
