// The index of one source file: at which time each of its frames begins. Made in one pass over the
// headers, it keeps a place in every 128 frames; what lies between two of them is walked anew when
// it is asked for. A frame that isn't there takes no time.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "platform/file.h"

namespace corvelin {

/// A frame's start in a source file and what lies in front of it there.
struct IndexPlace {
  std::uint64_t ticks = 0;   // that its frames take, in parts of a second (`ticks_per_second`)
  std::uint32_t offset = 0;  // in the file, bytes
  std::uint32_t frames = 0;
};

class FrameIndex {
 public:
  [[nodiscard]] bool is_built() const { return is_built_; }

  /// Walks over the audio of `file` from `first_audio` to `audio_end`. The other operations need
  /// the same file.
  void build(const InputFile& file, std::uint32_t first_audio, std::uint32_t audio_end);

  /// Behind the last frame that ends at or before `offset`.
  IndexPlace at_offset(const InputFile& file, std::uint32_t offset);

  /// The first frame that begins `ticks` or more behind the start; behind the last frame when there
  /// is none.
  [[nodiscard]] IndexPlace at_ticks(const InputFile& file, std::uint64_t ticks) const;

 private:
  [[nodiscard]] IndexPlace walk_to_offset(const InputFile& file, std::uint32_t offset) const;

  bool is_built_ = false;
  std::vector<IndexPlace> places_;  // in ascending order: 16 bytes in 128 frames
  IndexPlace end_;                  // behind the last frame
  std::uint32_t audio_end_ = 0;
  std::unordered_map<std::uint32_t, IndexPlace> asked_;  // answers of `at_offset`, by the offset
};

}  // namespace corvelin
