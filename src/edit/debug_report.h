// What the debug window shows: the model's places in plain numbers, and the bit of a frame from
// which the graph takes its height, which can be moved to look at other fields.
#pragma once

#include <cstdint>
#include <string>

namespace corvelin {

/// At most about 1000 bytes: the parts that have no room are left out.
std::string debug_report();

constexpr std::uint16_t last_gain_bit = 300;

/// Moves the bit, and has the view drawn anew.
void set_gain_bit(std::uint16_t bit);

}  // namespace corvelin
