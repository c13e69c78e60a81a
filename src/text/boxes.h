// The boxes of what can't be done and of what went wrong, which several commands share. Each has an
// error icon, and a refusal the caption "Not possible".
#pragma once

#include <string>
#include <string_view>

namespace corvelin {

/// Tells what went wrong, as in a failed write, under the caption "Error".
void show_error(const std::string& text);

/// Tells why a command is refused.
void show_refusal(std::string_view text);

/// Asks whether a dialog is to take its default values.
bool confirm_defaults();

/// The range can't be taken out, or can't be treated as one.
void show_invalid_range();

}  // namespace corvelin
