// Logs before and after `main`, to "run.csv" in the folder in the first argument. The static
// library is linked after this file, so the log here is constructed before the library's objects
// and destroyed after them.
#include <string>
#include <thread>

#include "vexor/vexor.h"

namespace {

const std::thread::id main_thread = std::this_thread::get_id();

struct LastUser {
  VexorLogging log = VexorLogging("header");

  LastUser() { ConsoleOut("the first line", TRACE_CRITICAL, false); }
  LastUser(const LastUser&) = delete;
  LastUser& operator=(const LastUser&) = delete;
  ~LastUser() {
    const std::string label = VexorLogging::GetThreadAffinityLog(main_thread);
    const bool is_routed = VexorLogging::GetThreadLogFileReference(main_thread) == &log;
    log.LogLine(label + (is_routed ? " is routed" : " is lost"), TRACE_CRITICAL);
    log.LogNote(GetErrorCode(PM_TEST_CSTATES, 1), TRACE_CRITICAL);
    ConsoleOut("the last line", TRACE_CRITICAL, false);
  }
};

LastUser last_user;

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  VexorLogging::SetThreadAffinityLog(main_thread, 1, 2, 3, 4);
  return last_user.log.Initialize(argv[1], "run", TRACE_DEBUG, LOG_FILE_NEW, false, true) ? 0 : 1;
}
