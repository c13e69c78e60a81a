// SPDX-License-Identifier: GPL-2.0-or-later
// The way back from an open document to none, and to the state of a program that just started.
#pragma once

#include <vector>

namespace corvelin {

/// Closes the document and all that lives with it, the name of its project too.
void close_all();

/// What the modules above do when a document closes.
struct CloseHooks {
  std::vector<void (*)()> before;    // those that read it stop
  std::vector<void (*)()> behind;    // those that hold something of it let it go
  std::vector<void (*)()> at_start;  // at a new start: those with a state of their own forget it
};

extern CloseHooks close_hooks;

/// Stops those that read the document, as `close_all` does first.
void stop_users_of_document();

/// How far `reset_state` goes, each level with the ones before it.
enum class ResetLevel {
  new_stream = 1,  // selection, cursor, stream, flags
  no_name = 2,     // also the name of the audio file
  start = 3,       // also the document and all settings: the state of a process that just started
};

void reset_state(ResetLevel level);

}  // namespace corvelin
