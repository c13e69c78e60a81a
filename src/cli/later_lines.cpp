// Edit lines that are still to come.
#include "cli/edit_line.h"

namespace corvelin {

namespace {

constexpr EditLine table[] = {
    {"save_reencoded", "PATH", "saves the stream encoded anew", 1, 1, true, nullptr},
    {"level", "FROM TO", "changes the level of the selection", 2, 2, true, nullptr},
    {"normalize", "[CHANGE]", "brings the level to its best", 0, 1, true, nullptr},
    {"pause_detection", "", "sets cues at the pauses", 0, 0, true, nullptr},
    {"auto_cue", "", "sets a cue every so many seconds", 0, 0, true, nullptr},
    {"every", "TIME", "sets a cue at each multiple of a time", 1, 1, true, nullptr},
    {"play", "[MODE] [SPEED]", "plays from the cursor", 0, 2, true, nullptr},
};

}  // namespace

std::span<const EditLine> later_lines() { return table; }

}  // namespace corvelin
