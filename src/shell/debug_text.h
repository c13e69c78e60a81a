// The inner state of a document, for those who look for a fault in the program.
#pragma once

#include <string>

namespace corvelin {

/// Sizes, places and parts as they are held. At most 1000 bytes: the table of a document with many
/// parts is cut.
std::string debug_text();

}  // namespace corvelin
