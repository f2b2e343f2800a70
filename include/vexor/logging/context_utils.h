// The interface through which a log tells a front end that it has moved to a new file, so that the
// front end can update its auto-run entry.
#pragma once

#include <string>

#include "vexor/export.h"

// The front end derives from this class and passes an object to `VexorLogging::SetAutoRunInfo`. The
// log calls it after each move to a new file, on the thread that logged the line, without holding a
// lock: the front end may log. If its own lines move the same log during the call, it is not called
// for these moves. An exception that it throws leaves the call that logged; the line of that call
// is in the log by then.
class VEXOR_EXPORT ContextUtils {
 public:
  ContextUtils() = default;
  ContextUtils(const ContextUtils&) = default;
  ContextUtils(ContextUtils&&) = default;
  ContextUtils& operator=(const ContextUtils&) = default;
  ContextUtils& operator=(ContextUtils&&) = default;
  virtual ~ContextUtils();

  // Overrides write the front end's auto-run entry and return whether that succeeded; the log
  // ignores the result. This implementation writes the script, and the flags as one character, to
  // standard output and returns false.
  virtual bool CreateAutoRun(std::string script, unsigned char flags);
};
