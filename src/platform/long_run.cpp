// The way of a long run to the host.
#include "platform/long_run.h"

namespace corvelin {

std::function<void(LongRun&)> long_run_driver;

void drive(LongRun& run) {
  if (long_run_driver) return long_run_driver(run);
  while (run.step()) {
  }
}

}  // namespace corvelin
