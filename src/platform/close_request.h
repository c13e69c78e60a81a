// The wish of a command that the program ends. The host fills in `close_request_handler` and
// ends it when the command is through.
#pragma once

#include <functional>

namespace corvelin {

void request_close();

extern std::function<void()> close_request_handler;

}  // namespace corvelin
