// Sample peaks at chosen places of the edited stream, measured without playing.
#pragma once

#include <cstdint>
#include <functional>

namespace corvelin {

/// Measures sample peaks at chosen places without playing.
struct PeakSeek {
  /// Starts a session of reads of at most `frames_per_step` frames. Shows a box when that fails.
  std::function<bool(std::uint32_t frames_per_step)> open;
  /// The highest sample magnitude (0 to 32768) of the next `frames` frames from the cursor, which
  /// moves behind them; `current_part` is the cursor's part before. 0 also when nothing was
  /// decoded.
  std::function<std::uint16_t(std::uint32_t frames)> read;
  /// Ends the session and puts the cursor back to where it was at its start.
  std::function<void()> close;
};

/// Until the audio engine is there it tells that nothing can be measured.
extern PeakSeek peak_seek;

}  // namespace corvelin
