// The way of a close request to the host.
#include "platform/close_request.h"

namespace corvelin {

std::function<void()> close_request_handler;

void request_close() {
  if (close_request_handler) close_request_handler();
}

}  // namespace corvelin
