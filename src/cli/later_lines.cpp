// Edit lines that are still to come.
#include "cli/edit_line.h"

namespace corvelin {

namespace {

constexpr EditLine table[] = {
    {"save_reencoded", "PATH", "saves the stream encoded anew", 1, 1, true, nullptr},
};

}  // namespace

std::span<const EditLine> later_lines() { return table; }

}  // namespace corvelin
