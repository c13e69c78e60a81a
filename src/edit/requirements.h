// What several commands need of the document before they begin. Each check shows the refusal when
// it doesn't hold.
#pragma once

#include <cstddef>

namespace corvelin {

/// Whether a selection with a length is there.
bool require_selected_range();

/// Whether the stream's level can be changed inside its frames, which Layer II and AAC don't allow.
bool require_level_control();

/// Whether the part table takes so many parts more.
bool require_room_for_parts(std::size_t count);

}  // namespace corvelin
