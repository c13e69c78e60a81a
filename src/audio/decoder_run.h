// SPDX-License-Identifier: GPL-2.0-or-later
// The whole edited stream as samples from its start on, block by block: what a save that encodes
// anew reads. Nothing plays or measures meanwhile.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "model/document.h"

namespace corvelin {

/// Begins the run, with the cursor at the stream's start. Returns the room for one block of at most
/// `frames_per_step` frames; nothing when the stream can't be decoded, which the user has been
/// told.
std::optional<std::vector<std::uint8_t>> open_decoder_run(std::uint32_t frames_per_step);

/// Decodes up to `frames` frames from the cursor to the block, adds them to `frame_counter`, and
/// returns how many bytes of samples that is.
std::size_t decode_block(std::span<std::uint8_t> block, std::uint32_t frames,
                         std::uint32_t& frame_counter);

/// Ends the run and puts the cursor back.
void close_decoder_run();

/// Opens a session for reads of `frames_per_step` frames up to `end`, which `close_decoder_run`
/// ends. False as above.
bool open_private_session(std::uint32_t frames_per_step, EditPosition end);

}  // namespace corvelin
