// Writing to the standard streams.
#include "cli/messages.h"

#include <csignal>
#include <cstdio>
#include <utility>

#include "platform/text.h"

namespace corvelin {

void write_message(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stderr); }

void tell(std::string text) { write_message(text += '\n'); }

void complain(std::string text) { tell("corvelin-cli: " + printable(std::move(text))); }

void print(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

void outlive_readers() { std::signal(SIGPIPE, SIG_IGN); }

bool flush_output() { return std::fflush(stdout) == 0 && std::ferror(stdout) == 0; }

}  // namespace corvelin
