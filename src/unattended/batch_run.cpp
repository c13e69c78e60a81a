// SPDX-License-Identifier: GPL-2.0-or-later
// The files of a batch, one after the other.
#include "unattended/batch_run.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <map>
#include <optional>
#include <system_error>
#include <utility>

#include "edit/auto_crop.h"
#include "edit/editor.h"
#include "edit/normalize_dialog.h"
#include "edit/open_files.h"
#include "exchange/save_run.h"
#include "exchange/split_save.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/exact_time.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "opening/append.h"
#include "opening/close_stream.h"
#include "opening/file_fault.h"
#include "opening/file_kind.h"
#include "opening/open_audio_file.h"
#include "opening/open_state.h"
#include "platform/files/file.h"
#include "platform/host.h"
#include "platform/processes/interruption.h"
#include "platform/quiet_host.h"
#include "platform/text/numbers.h"
#include "platform/text/path.h"
#include "platform/text/text.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"
#include "unattended/batch_leftovers.h"
#include "unattended/dialog_runs.h"

namespace corvelin {

namespace {

constexpr int layer_with_levels = 3;

std::string one_line(std::string text) {
  while (text.ends_with('\n') || text.ends_with('\r')) text.pop_back();
  std::erase(text, '\r');
  std::string line;
  for (const char c : text) {
    if (c != '\n') line += c;
    if (c == '\n') line += line.ends_with(':') ? " " : ": ";
  }
  return line;
}

// Both texts, of which either may be empty.
std::string in_a_row(const std::string& first, const std::string& second) {
  return first + (first.empty() || second.empty() ? "" : ": ") + second;
}

// The fault that a box tells. One that tells what to do about it has the fault in its caption, and
// the step that this platform needs in its last paragraph.
std::string fault_in(const MessageBox& box) {
  std::string fault = box.text;
  if (const std::size_t last = fault.rfind("\n\n"); last != std::string::npos)
    fault = box.caption + fault.substr(last + 1);
  if (!box.cause.empty()) fault += "\n" + box.cause;
  return one_line(std::move(fault));
}

// What is said while a file is worked on becomes the reason of its result.
class BatchHost : public QuietHost {
 public:
  explicit BatchHost(const std::function<bool()>& between_slices)
      : between_slices_(between_slices) {}

  void drive(LongRun& run) override {
    while (run.step()) {
      const bool goes_on = !between_slices_ || between_slices_();
      if (goes_on && interruption() == 0) continue;
      run.cancel();
      take_boxes();
      report_ = one_line(run.report());
      return;
    }
  }

  std::string take_said() {
    std::string said = std::exchange(report_, {});
    for (const MessageBox& box : take_boxes()) said = in_a_row(said, fault_in(box));
    return said;
  }

 private:
  const std::function<bool()>& between_slices_;
  std::string report_;  // of a run that was cancelled
};

// Gives a failure its reason. Nothing is wrong with a file that Ctrl+C came upon.
void settle(BatchResult& result, BatchHost& quiet) {
  if (result.outcome != BatchOutcome::failed) return;
  result.reason = in_a_row(quiet.take_said(), result.reason);
  if (interruption() != 0) result.outcome = BatchOutcome::stopped;
}

double seconds_of(const std::string& field) { return read_seconds(field).value_or(0); }

// The last frame that begins so many seconds behind the start, or less.
EditPosition frame_not_behind(Editor& editor, double seconds) {
  constexpr double allowed = 1e-6;  // seconds, as a sum of frames is no round number
  const EditPosition pos = exact_place(editor.document, seconds);
  return exact_seconds(editor.document, pos) > seconds + allowed
             ? frame_before(editor.document, pos, editor.selection.current_frame)
             : pos;
}

double whole_seconds(const Document& document) {
  return exact_seconds(document, document.total_size);
}

enum class Change : std::uint8_t { none, made, nothing_left, impossible };

// What is left is no longer than that.
Change limit_length(Editor& editor, double seconds) {
  const EditPosition end = frame_not_behind(editor, seconds);
  if (end == 0) return Change::nothing_left;
  if (end >= editor.document.total_size) return Change::none;
  return delete_range(editor.document, end, editor.document.total_size) != no_part
             ? Change::made
             : Change::impossible;
}

// At least so much of either end goes.
Change cut_ends(Editor& editor, double begin_seconds, double end_seconds) {
  const double whole = whole_seconds(editor.document);
  const EditPosition begin = begin_seconds > 0 ? exact_place(editor.document, begin_seconds) : 0;
  const EditPosition end = end_seconds > 0
                               ? frame_not_behind(editor, std::max(whole - end_seconds, 0.0))
                               : editor.document.total_size;
  if (begin >= end) return Change::nothing_left;
  const bool is_end_cut = end == editor.document.total_size ||
                          delete_range(editor.document, end, editor.document.total_size) != no_part;
  const bool is_begin_cut = begin == 0 || delete_range(editor.document, 0, begin) != no_part;
  return is_end_cut && is_begin_cut ? Change::made : Change::impossible;
}

// A fade that is longer than the stream takes all of it.
void fade_ends(Editor& editor, double begin_seconds, double end_seconds, int bottom) {
  const auto gain = static_cast<std::int16_t>(-(2 * bottom) / 3);
  const double whole = whole_seconds(editor.document);
  const EditPosition begin = begin_seconds > 0 ? exact_place(editor.document, begin_seconds) : 0;
  const EditPosition end = end_seconds > 0
                               ? exact_place(editor.document, std::max(whole - end_seconds, 0.0))
                               : editor.document.total_size;
  if (begin != 0 && delete_range(editor.document, begin, begin) != no_part)
    editor.document.parts[0].part_gainbeg = gain;
  if (end < editor.document.total_size && delete_range(editor.document, end, end) != no_part)
    editor.document.end_gain = gain;
}

void shift_levels(Editor& editor, int steps) {
  for (Part& part : editor.document.parts)
    part.part_gainbeg = static_cast<std::int16_t>(part.part_gainbeg + steps);
  editor.document.end_gain = static_cast<std::int16_t>(editor.document.end_gain + steps);
}

Change normalize(Editor& editor, std::uint8_t level) {
  const std::int16_t before = editor.document.parts[0].part_gainbeg;
  set_selection(editor.selection, 0, editor.document.total_size);
  NormalizeDialog dialog(editor);
  dialog.batch_level = level;
  dialog.begin();
  if (dialog.state != NormalizeDialog::State::scanning) return Change::impossible;
  run_unattended(dialog);
  if (dialog.state == NormalizeDialog::State::stopped) return Change::impossible;
  return editor.document.parts[0].part_gainbeg != before ? Change::made : Change::none;
}

Change crop(Editor& editor, unsigned bottom) {
  const std::uint32_t before = editor.document.total_size;
  if (!(bottom != 0 ? auto_crop_below(editor, bottom) : auto_crop(editor)))
    return Change::impossible;
  return editor.document.total_size < before ? Change::made : Change::none;
}

// Carries out the options in the order of their work, and tells whether there is something to save.
class Changes {
 public:
  Changes(Editor& editor, const BatchJob& job) : editor_(editor), job_(job) {}

  Change make() {
    if (job_.has(BatchOption::only_save)) result_ = Change::made;
    if (job_.has(BatchOption::limit_length))
      take(limit_length(editor_, seconds_of(job_.limit_seconds)));
    if (job_.has(BatchOption::cut) && goes_on())
      take(cut_ends(editor_, seconds_of(job_.cut_begin), seconds_of(job_.cut_end)));
    if (job_.has(BatchOption::auto_crop) && goes_on()) take(crop(editor_, job_.usable_bottom()));
    if (editor_.document.kind.layer == layer_with_levels && goes_on()) change_levels();
    return result_;
  }

 private:
  void change_levels() {
    if (job_.has(BatchOption::simple_fade)) {
      fade_ends(editor_, seconds_of(job_.fade_begin), seconds_of(job_.fade_end),
                job_.usable_bottom());
      take(Change::made);
    }
    if (job_.has(BatchOption::normalize)) take(normalize(editor_, job_.batch_level));
    if (job_.has(BatchOption::level)) {
      shift_levels(editor_, job_.batch_level - BatchJob::level_of_0_db);
      take(Change::made);
    }
  }

  [[nodiscard]] bool goes_on() const { return result_ <= Change::made; }

  void take(Change change) {
    if (change == Change::none && !job_.has(BatchOption::skip_unchanged)) change = Change::made;
    result_ = std::max(result_, change);
  }

  Editor& editor_;
  const BatchJob& job_;
  Change result_ = Change::none;
};

bool splits(const BatchJob& job) {
  return job.has(BatchOption::pause_detection) || job.has(BatchOption::auto_cue);
}

// Paths without links in them. A list of a hundred thousand files names few folders, and a look at
// one that is far away takes its time: so each is looked up once for the names that follow one
// another.
class PathsWithoutLinks {
 public:
  // Empty for a file that isn't there.
  std::string of(const std::string& path) {
    namespace fs = std::filesystem;
    const std::string_view folder = folder_of(path);
    std::error_code error;
    if (folder != folder_ || true_folder_.empty()) {
      folder_ = folder;
      true_folder_ = fs::canonical(folder.empty() ? "." : folder_, error).string();
    }
    const fs::file_status status = fs::symlink_status(path, error);
    if (!fs::exists(status)) return {};
    if (!fs::is_symlink(status)) return in_folder(true_folder_, name_of(path));
    const std::string target = fs::canonical(path, error).string();
    return error ? std::string() : target;
  }

 private:
  std::string folder_;
  std::string true_folder_;
};

// Of several names that lead to one file by links, each but the first, with the first. A source
// that is replaced is to be changed once.
std::map<std::string, std::string> names_of_same_file(const std::string& folder,
                                                      const std::vector<const BatchItem*>& items) {
  PathsWithoutLinks paths;
  std::map<std::string, std::string> first_names;  // by the path without links
  std::map<std::string, std::string> others;
  for (const BatchItem* const item : items) {
    const std::string path = paths.of(folder + item->name);
    if (path.empty()) continue;  // it will not open either
    const auto [first, is_new] = first_names.try_emplace(path, item->name);
    if (!is_new) others.emplace(item->name, first->second);
  }
  return others;
}

// The file of a list keeps its folders in the destination, so that two of one name from different
// folders have a place each.
std::string place_in_destination(const std::string& name) {
  if (name.find('/') == std::string::npos) return name;
  std::string place = std::filesystem::path(name).lexically_normal().string();
  if (place.starts_with("../")) place = in_current_folder(place);
  return place.substr(std::min(place.find_first_not_of('/'), place.size()));
}

// Whether two names are one for a disk that doesn't tell capitals from small letters.
bool has_equal_names(const std::vector<BatchItem>& items) {
  std::vector<std::string> names;
  for (const BatchItem& item : items) {
    names.push_back(std::filesystem::path(item.name).lexically_normal().string());
    for (char& c : names.back()) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  std::ranges::sort(names);
  return std::ranges::adjacent_find(names) != names.end();
}

}  // namespace

std::string_view name_of(BatchOutcome outcome) {
  switch (outcome) {
    case BatchOutcome::written:
      return "written";
    case BatchOutcome::split:
      return "split";
    case BatchOutcome::unchanged:
      return "unchanged";
    case BatchOutcome::joined:
      return "joined";
    case BatchOutcome::unjoined:
      return "unjoined";
    case BatchOutcome::failed:
      return "failed";
    case BatchOutcome::stopped:
      return "stopped";
  }
  return {};
}

bool can_run_side_by_side(const BatchJob& job) {
  if (job.has(BatchOption::join)) return false;
  // Where the disk takes a.mp3 and A.mp3 for one name, the second must find the file of the first.
  if (has_equal_names(job.items)) return false;
  return !splits(job) || settings.split_pattern.find(u"%F") != std::u16string::npos;
}

BatchRun::BatchRun(Editor& editor, BatchJob job, std::function<bool()> between_slices,
                   BatchStartHook before_writing)
    : editor_(editor),
      job_(std::move(job)),
      between_slices_(std::move(between_slices)),
      before_writing_(std::move(before_writing)) {
  for (const BatchItem& item : job_.items)
    if (item.is_selected) items_.push_back(&item);
  if (job_.has(BatchOption::overwrite_originals))
    same_files_ = names_of_same_file(job_.source_folder, items_);
  for (const std::string& name : job_.leftovers) tell_of_all(told_of_leftover(name));
  editor_.batch_active = true;
}

BatchRun::~BatchRun() { editor_.batch_active = false; }

bool BatchRun::step() {
  if (is_over_) return false;
  if (number_ < items_.size() && !is_stopped_ && !ends_early_) {
    process(*items_[number_++]);
    if (interruption() != 0) is_stopped_ = true;
    return true;
  }
  if (!join_target_.empty()) end_join();
  finish();
  return false;
}

void BatchRun::process(const BatchItem& item) {
  if (!job_.has(BatchOption::join)) {
    results_.push_back(work_on(item));
    if (results_.back().outcome == BatchOutcome::written) ++written_;
    return;
  }
  joining_.push_back(join_target_.empty() ? begin_join(item) : join(item));
  ends_early_ = joining_.back().outcome == BatchOutcome::failed;
  if (!ends_early_) return;
  settle_join(BatchOutcome::unjoined);
  close_all(editor_);
  join_target_.clear();
}

// What became of the whole is what became of each, but for the one that failed.
void BatchRun::settle_join(BatchOutcome outcome) {
  for (BatchResult& result : joining_) {
    if (result.outcome == BatchOutcome::joined) result.outcome = outcome;
    results_.push_back(std::move(result));
  }
  joining_.clear();
}

BatchResult BatchRun::work_on(const BatchItem& item) {
  BatchHost quiet(between_slices_);
  BatchResult result = {.name = item.name};
  const auto same = same_files_.find(item.name);
  if (same != same_files_.end()) {
    result.reason = "leads to the same file as " + same->second;
  } else if (open(result)) {
    const Change change = splits(job_) ? Change::made : Changes(editor_, job_).make();
    if (change == Change::made)
      result = splits(job_) ? split(std::move(result)) : save(std::move(result), item.begun_target);
    if (change == Change::none) result.outcome = BatchOutcome::unchanged;
    if (change == Change::nothing_left) result.reason = "nothing would be left";
  }
  settle(result, quiet);
  if (!result.reason.empty() && (problems_.empty() || problems_.back().number != number_))
    tell(fmt::format("{}: {}  {}", number_, result.name, result.reason));
  close_all(editor_);
  editor_.open_state.document_modified = false;
  return result;
}

bool BatchRun::open(BatchResult& result) {
  const std::string path = job_.source_folder + result.name;
  close_all(editor_);
  reset_state(editor_.document, editor_.selection, editor_.open_state, ResetLevel::new_stream);
  const std::string fault =
      open_audio_file(editor_.document, editor_.selection, editor_.open_state, path);
  if (fault.empty()) {
    host().refresh_view(Refresh::all);
    return true;
  }
  result.reason = one_line(fault);
  note(result, ui_text(row::open_failed));
  close_all(editor_);
  return false;
}

BatchResult BatchRun::split(BatchResult result) {
  const bool has_cues = job_.has(BatchOption::pause_detection) ? cue_pauses_of_whole_stream(editor_)
                                                               : cue_by_clock(editor_);
  if (!has_cues) return result;
  const std::string folder(folder_of(target_name(result.name)));
  result.target = folder;
  if (!may_write(result)) return result;
  editor_.open_state.split_dest_folder = folder;
  SplitRun run(editor_.document, editor_.selection, editor_.open_state, folder, 1, true);
  drive(run);
  if (run.result() == SplitResult::finished) {
    result.outcome = BatchOutcome::split;
    return result;
  }
  result.target.clear();
  result.reason = one_line(run.report().empty() ? std::string(run.status()) : run.report());
  note(result, ui_text(row::split_aborted));
  return result;
}

BatchResult BatchRun::save(BatchResult result, const std::string& begun_target) {
  const bool replaces_source = job_.has(BatchOption::overwrite_originals);
  const std::string& audio = editor_.open_state.audio_name;
  const std::string target = replaces_source ? audio + ".~~~" + std::string(extension_of(audio))
                                             : target_name(result.name);
  result.target = replaces_source ? audio : target;
  const bool is_begun = result.target == begun_target;
  const bool is_own = is_begun && (!replaces_source || is_given_up(target));
  if (is_own && replaces_source) remove_file(target);  // a failure shows in the next line
  if ((!is_own || replaces_source) && is_name_taken(target)) {
    result.reason = "exists already: " + target;
    result.target.clear();
    note(result, ui_text(row::file_exists));
    return result;
  }
  if (may_write(result)) save_to(result.target, replaces_source, result);
  return result;
}

void BatchRun::save_to(const std::string& name, bool replaces_source, BatchResult& result) {
  SaveRun run(editor_.document, editor_.selection, editor_.open_state, name,
              whole_stream(editor_.document),
              replaces_source ? std::optional<std::uint16_t>(0) : std::nullopt);
  if (run.begin()) drive(run);
  const bool is_saved = run.is_written() && !run.has_failed();
  if (is_saved) result.outcome = BatchOutcome::written;
  if (!is_saved) result.target.clear();
  // Bad data that was left out, or where the work is that could not take its place.
  if (run.is_written()) result.reason = one_line(run.report());
}

// Makes the folder that the target needs, and tells what is going to be done. After that a target
// that isn't all there is this program's own work.
bool BatchRun::may_write(BatchResult& result) const {
  const std::string folder(folder_of(result.target));
  if (!job_.dest_folder.empty())
    if (const std::error_code error = create_folders(folder))
      result.reason = fmt::format("{}: {}", folder, error.message());
  if (result.reason.empty() && before_writing_)
    result.reason = before_writing_(
        {result.name, result.target, editor_.document.files[0].handle->facts_at_open()});
  if (!result.reason.empty()) result.target.clear();
  return result.reason.empty();
}

// Beside the source song.mp3 is saved as song.mp3.mp3.
std::string BatchRun::target_name(const std::string& name) const {
  if (job_.dest_folder.empty() || job_.has(BatchOption::overwrite_originals))
    return job_.source_folder + name + std::string(extension_of(name_of(name)));
  return in_folder(job_.dest_folder, place_in_destination(name));
}

BatchResult BatchRun::begin_join(const BatchItem& item) {
  BatchResult result = {.name = item.name};
  if (!open(result)) return result;
  if (items_.size() > most_files) {
    result.reason = fmt::format("{}{}{}", ui_text(row::too_many_files),
                                ui_text(row::too_many_files).ends_with(' ') ? "" : " ", most_files);
    show_refusal(result.reason);
    return result;
  }
  if (job_.join_name.empty()) {
    result.reason = "The joined file has no name.";
    tell(result.reason);
    return result;
  }
  // The mask *.mp3 tells the extension; where it fits several, that of the first file holds.
  std::string extension = job_.mask.substr(std::min(job_.mask.find('.'), job_.mask.size()));
  const bool fits_several = extension.find_first_of("*?") != std::string::npos;
  if (fits_several || file_kind(extension) == FileKind::other) extension = extension_of(item.name);
  const bool is_beside = job_.dest_folder.empty() || job_.has(BatchOption::overwrite_originals);
  const std::string source = job_.source_folder + item.name;
  join_target_ = in_folder(is_beside ? folder_of(source) : std::string_view(job_.dest_folder),
                           job_.join_name + extension);
  result.outcome = BatchOutcome::joined;
  return result;
}

BatchResult BatchRun::join(const BatchItem& item) {
  BatchResult result = {.name = item.name, .outcome = BatchOutcome::joined};
  std::vector<std::string> lines;
  if (append_file_reported(editor_.document, job_.source_folder + item.name, &lines)) return result;
  result.outcome = BatchOutcome::failed;
  result.reason = lines.back();
  tell(result.reason);
  return result;
}

// A join that was stopped has not all of its files, so it is given up.
void BatchRun::end_join() {
  BatchHost quiet(between_slices_);
  BatchResult result = {.name = std::string(name_of(join_target_)), .target = join_target_};
  if (is_stopped_) {
    result.outcome = BatchOutcome::stopped;
    result.target.clear();
  } else if (is_name_taken(join_target_)) {
    result.reason = "exists already: " + join_target_;
    result.target.clear();
    tell_of_all(fmt::format("{}  {}", ui_text(row::file_exists), result.name));
  } else {
    save_to(join_target_, false, result);
    if (result.outcome == BatchOutcome::written) ++written_;
    settle(result, quiet);
    if (!result.reason.empty()) tell_of_all(result.reason);
  }
  const bool is_joined = result.outcome == BatchOutcome::written;
  settle_join(is_joined     ? BatchOutcome::joined
              : is_stopped_ ? BatchOutcome::stopped
                            : BatchOutcome::unjoined);
  results_.push_back(std::move(result));
  join_target_.clear();
}

void BatchRun::finish() {
  close_all(editor_);
  for (std::size_t i = number_; i < items_.size(); ++i)
    results_.push_back({.name = items_[i]->name,
                        .outcome = ends_early_ ? BatchOutcome::unjoined : BatchOutcome::stopped});
  if (is_stopped_) tell_of_all(std::string(ui_text(row::user_stopped)));
  editor_.open_state.document_modified = false;
  is_over_ = true;
  host().refresh_view(Refresh::all);
}

void BatchRun::note(const BatchResult& result, std::string_view label) {
  tell(fmt::format("{}: {}  {}", number_, label, result.name));
}

void BatchRun::tell(std::string line) {
  problems_.push_back({.number = number_, .line = std::move(line)});
}

void BatchRun::tell_of_all(std::string line) { problems_.push_back({.line = std::move(line)}); }

int BatchRun::percent_done() const { return percent_of(number_, items_.size()); }

std::string BatchRun::progress_text() const {
  std::string text =
      fmt::format("{} {} / {}", ui_text(row::processing_file), number_, items_.size());
  if (is_over_) text += fmt::format("  ({}: {})", ui_text(row::written), written_);
  return text;
}

}  // namespace corvelin
