// Cues by the clock.
#include "edit/auto_cue_dialog.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

#include "edit/commands.h"
#include "model/cuts.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "model/time_mapping.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

std::string minutes_and_seconds(std::uint32_t seconds) {
  return fmt::format("{}:{:02}", seconds / 60, seconds % 60);
}

// The number that the text begins with; 0 for none.
std::uint32_t leading_number(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  std::uint32_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

// Nothing without a ":".
std::optional<std::uint16_t> read_seconds(std::string_view text) {
  constexpr std::uint64_t most = 65535;  // that the setting holds
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const std::uint64_t seconds = std::uint64_t{leading_number(text.substr(0, colon))} * 60 +
                                leading_number(text.substr(colon + 1));
  return static_cast<std::uint16_t>(std::min(seconds, most));
}

bool set_cue(EditPosition frame, std::int16_t gain, bool has_name) {
  selection.sel_title.clear();
  selection.sel_artist.clear();
  const PartIndex made = make_border(frame);
  if (made >= part_count()) return false;
  document.parts[made].part_iscue = 1;
  document.parts[made].part_gainbeg = gain;
  if (!has_name) return true;
  selection.sel_title = bytes_to_wide(format_time(frame, stream.avg_bitrate), true);
  take_stashed_part_texts(made);
  return true;
}

int set_cues(const AutoCues& cues) {
  const double bytes_a_second = double{stream.avg_bitrate} * 0.125;
  const double step = cues.interval * bytes_a_second;
  const double shortest_rest = (cues.interval + cues.last_length) * bytes_a_second;
  if (!(step >= 1)) return 0;
  const bool has_range = has_selected_range();
  const std::uint32_t begin = has_range ? to_time_scale(selection.sel_beg) : 0;
  const std::uint32_t end = has_range ? to_time_scale(selection.sel_end) : document.total_size;
  const std::int16_t gain = document.parts[part_at(begin)].part_gainbeg;

  int count = 0;
  for (double scaled = begin; scaled < end; scaled += step) {
    const std::uint32_t place = whole_part(scaled);
    if (place == 0) continue;  // the stream's start is a track start already
    const EditPosition pos = from_time_scale(place);
    const EditPosition frame = std::min(scan_forward(part_at(pos), pos), document.total_size);
    if (!set_cue(frame, gain, cues.creates_names)) break;
    ++count;
    if (document.total_size - frame < shortest_rest) break;  // the next part would be too short
  }
  return count;
}

}  // namespace

void AutoCueDialog::begin() {
  interval = minutes_and_seconds(settings.autocue);
  last_length = minutes_and_seconds(settings.autocue_last);
  creates_names = settings.autocue_names != 0;
}

bool AutoCueDialog::accept() {
  const std::optional<std::uint16_t> seconds = read_seconds(interval);
  if (!seconds) return false;
  settings.autocue = *seconds;
  if (const auto last = read_seconds(last_length)) settings.autocue_last = *last;
  settings.autocue_names = creates_names ? 1 : 0;
  if (settings.autocue == 0) {
    show_refusal(ui_text(row::no_interval));
    return false;
  }
  cues_set = set_auto_cues({.interval = static_cast<double>(settings.autocue),
                            .last_length = static_cast<double>(settings.autocue_last),
                            .creates_names = creates_names});
  return true;
}

int set_auto_cues(const AutoCues& cues) {
  int count = 0;
  carry_out(*command_of(command::auto_cue_dialog), [&] {
    count = set_cues(cues);
    selection.sel_beg = selection.sel_end = no_position;
    return count > 0 ? Result::done : Result::nothing;
  });
  return count;
}

bool auto_cue_dialog() {
  AutoCueDialog dialog;
  return show_dialog(dialog);
}

}  // namespace corvelin
