// SPDX-License-Identifier: GPL-2.0-or-later
// What the program says: messages to standard error, results to standard output. A message that
// can't be written is lost and nothing else: the work goes on.
#pragma once

#include <string>
#include <string_view>

namespace corvelin {

/// Writes a text as it stands to standard error.
void write_message(std::string_view text);

/// The same with a line end behind it.
void tell(std::string text);

/// The same, as a message of the program: "corvelin-cli: TEXT". What no terminal should see is
/// replaced.
void complain(std::string text);

/// Writes a text as it stands to standard output. A failure is remembered until `flush_output`.
void print(std::string_view text);

/// From now on output that nobody reads any more is lost, and ends nothing: for work that is worth
/// more than what it says.
void outlive_readers();

/// Writes what is still in memory. False when anything that was printed is lost.
bool flush_output();

/// Takes the file that output goes to for this run alone. False when another run has it.
bool lock_output();

/// Has what was written be on the disk, where it goes to a file. False when it may not last.
bool sync_output();

}  // namespace corvelin
