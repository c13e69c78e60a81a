// The way back from an open document to none, and to the state of a program that just started.
#pragma once

#include <vector>

namespace corvelin {

/// Closes the document and all that lives with it.
void close_all();

/// The modules above that are told of a close.
struct CloseHooks {
  std::vector<void (*)()> before;  // those that read the document: they stop
  std::vector<void (*)()> behind;  // those that hold something of it: they let it go
};

extern CloseHooks close_hooks;

/// How far `reset_state` goes, each level with the ones before it.
enum class ResetLevel {
  new_stream = 1,  // selection, cursor, stream, flags
  no_name = 2,     // also the name of the audio file
  start = 3,       // also the document and all settings: the state of a process that just started
};

void reset_state(ResetLevel level);

}  // namespace corvelin
