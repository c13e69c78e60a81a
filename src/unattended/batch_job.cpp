// SPDX-License-Identifier: GPL-2.0-or-later
// The list and the options of a batch.
#include "unattended/batch_job.h"

#include <fmt/format.h>

#include <algorithm>
#include <ctime>
#include <utility>

#include "edit/editor.h"
#include "opening/file_kind.h"
#include "opening/open_state.h"
#include "platform/files/file.h"
#include "platform/files/folder_list.h"
#include "platform/text/path.h"
#include "platform/text/text.h"
#include "settings/settings.h"
#include "text/text_rows.h"
#include "text/ui_text.h"
#include "unattended/batch_leftovers.h"

namespace corvelin {

namespace {

constexpr std::uint16_t bit(BatchOption option) { return static_cast<std::uint16_t>(option); }

// An option that makes something else of a file than the usual copy stands alone.
constexpr std::uint16_t stand_alone = bit(BatchOption::only_save) |
                                      bit(BatchOption::pause_detection) |
                                      bit(BatchOption::auto_cue) | bit(BatchOption::join);

std::uint16_t excluded_by(BatchOption option) {
  switch (option) {
    case BatchOption::only_save:
    case BatchOption::pause_detection:
    case BatchOption::auto_cue:
    case BatchOption::join:
      return static_cast<std::uint16_t>(~(bit(option) | bit(BatchOption::overwrite_originals)));
    case BatchOption::normalize:
      return stand_alone | bit(BatchOption::level);
    case BatchOption::level:
      return stand_alone | bit(BatchOption::normalize);
    case BatchOption::cut:
    case BatchOption::limit_length:
      return stand_alone | bit(BatchOption::auto_crop);
    case BatchOption::auto_crop:
      return stand_alone | bit(BatchOption::cut) | bit(BatchOption::limit_length);
    case BatchOption::simple_fade:
    case BatchOption::skip_unchanged:
      return stand_alone;
    case BatchOption::overwrite_originals:
      break;
  }
  return 0;
}

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// The number that begins at `at`, of which 15 digits count.
std::int64_t number_at(std::string_view text, std::size_t at) {
  constexpr std::size_t most_digits = 15;
  std::int64_t number = 0;
  for (std::size_t i = at; i < std::min(text.size(), at + most_digits) && is_digit(text[i]); ++i)
    number = number * 10 + (text[i] - '0');
  return number;
}

int sign_of(std::int64_t value) { return value < 0 ? -1 : value > 0 ? 1 : 0; }

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// track2 comes before track10: where two names begin to differ with a digit each, the numbers
// count. Upper and lower case make a difference only where nothing else does.
int compare_names(std::string_view a, std::string_view b) {
  const auto [at_a, at_b] = std::ranges::mismatch(a, b, {}, lower, lower);
  if (at_a == a.end() && at_b == b.end()) return sign_of(a.compare(b));
  if (at_a == a.end() || at_b == b.end()) return at_a == a.end() ? -1 : 1;
  if (is_digit(*at_a) && is_digit(*at_b)) {
    const auto at = static_cast<std::size_t>(at_a - a.begin());
    const std::int64_t difference = number_at(a, at) - number_at(b, at);
    if (difference != 0) return sign_of(difference);
  }
  return static_cast<unsigned char>(lower(*at_a)) < static_cast<unsigned char>(lower(*at_b)) ? -1
                                                                                             : 1;
}

bool is_audio(const std::string& name) {
  const FileKind kind = file_kind(name);
  return kind == FileKind::mpeg_audio || kind == FileKind::aac;
}

std::string date_text(std::timespec time) {
  std::tm local = {};
  ::localtime_r(&time.tv_sec, &local);
  return fmt::format("{}-{:02}-{:02}  {:02}:{:02}:{:02}", local.tm_year + 1900, local.tm_mon + 1,
                     local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
}

std::string first_folder(const Editor& editor) {
  constexpr std::size_t shortest_folder = 3;  // characters
  if (settings.working_dir.size() >= shortest_folder) return settings.working_dir;
  if (!editor.open_state.audio_name.empty())
    return std::string(folder_of(editor.open_state.audio_name));
  return settings.file_recent.empty() ? std::string()
                                      : std::string(folder_of(settings.file_recent.front()));
}

// Returns why there is no list.
std::string list_source(const std::string& folder, const std::string& mask,
                        std::vector<FolderEntry>& entries) {
  constexpr std::size_t longest_mask = 30;  // characters
  if (!folder.starts_with('/')) return format_row(ui_text(row::folder_begins_with_slash), folder);
  if (cut_to_units(mask, longest_mask) != mask)
    return format_row(ui_text(row::longest_mask), mask, longest_mask);
  const std::error_code error = list_folder(folder, mask, entries);
  return error ? fmt::format("{}: {}", folder, error.message()) : std::string();
}

std::string seconds_fault(const std::string& field) {
  return read_seconds(field) ? std::string()
                             : format_row(ui_text(row::no_number_of_seconds), field);
}

}  // namespace

std::optional<double> read_seconds(std::string_view field) {
  std::string text(field);
  std::ranges::replace(text, ',', '.');
  const bool is_number = text != "." && std::ranges::count(text, '.') <= 1 &&
                         text.find_first_not_of("0123456789.") == std::string::npos;
  return is_number ? std::optional(leading_decimal(text)) : std::nullopt;
}

void BatchJob::begin(const Editor& editor) {
  limit_seconds = cut_begin = cut_end = fade_begin = fade_end = join_name = {};
  batch_level = level_of_0_db;
  if (source_folder.empty()) {
    source_folder = first_folder(editor);
    batch_bottom =
        static_cast<std::uint8_t>(std::min<unsigned>(settings.lowest_gain, highest_bottom));
  }
  scan_batch_folder();
}

void BatchJob::scan_batch_folder() {
  items.clear();
  leftovers.clear();
  source_fault.clear();
  if (source_folder.empty()) return;
  if (!source_folder.ends_with('/')) source_folder += '/';
  std::vector<FolderEntry> entries;
  source_fault = list_source(source_folder, mask, entries);
  for (FolderEntry& entry : entries) {
    if (entry.is_folder || !is_audio(entry.name)) continue;
    if (is_leftover(entry.name)) {
      leftovers.push_back(std::move(entry.name));
      continue;
    }
    constexpr double megabytes = 9.536743e-07;
    items.push_back(
        {.name = std::move(entry.name),
         .size = entry.size,
         .size_text = fmt::format(
             "{:.2f} MB", static_cast<double>(static_cast<std::uint32_t>(entry.size)) * megabytes),
         .date_text = date_text(entry.write_time)});
  }
  sort();
  std::ranges::sort(leftovers);
}

void BatchJob::sort_by(BatchColumn column) {
  sort_descending = column == sort_column && !sort_descending;
  sort_column = column;
  sort();
}

void BatchJob::sort() {
  std::ranges::stable_sort(items, [this](const BatchItem& a, const BatchItem& b) {
    return batch_compare(a, b, sort_column, sort_descending) < 0;
  });
}

void BatchJob::move_selected(std::size_t before) {
  before = std::min(before, items.size());
  const auto border = items.begin() + static_cast<std::ptrdiff_t>(before);
  // The selected ones in front of the border go to its left side, those behind it to its right.
  std::stable_partition(items.begin(), border, [](const BatchItem& i) { return !i.is_selected; });
  std::stable_partition(border, items.end(), [](const BatchItem& i) { return i.is_selected; });
}

std::string BatchJob::fault_in(BatchField field) const {
  switch (field) {
    case BatchField::source:
      return source_fault;
    case BatchField::limit_seconds:
      return has(BatchOption::limit_length) ? seconds_fault(limit_seconds) : std::string();
    case BatchField::cut_begin:
      return has(BatchOption::cut) ? seconds_fault(cut_begin) : std::string();
    case BatchField::cut_end:
      return has(BatchOption::cut) ? seconds_fault(cut_end) : std::string();
    case BatchField::fade_begin:
      return has(BatchOption::simple_fade) ? seconds_fault(fade_begin) : std::string();
    case BatchField::fade_end:
      return has(BatchOption::simple_fade) ? seconds_fault(fade_end) : std::string();
    case BatchField::join_name:
      if (!has(BatchOption::join)) break;
      if (join_name.empty()) return std::string(ui_text(row::joined_file_has_no_name));
      if (join_name.find('/') != std::string::npos)
        return format_row(ui_text(row::name_has_no_slash), join_name);
      break;
  }
  return {};
}

bool BatchJob::has(BatchOption option) const { return (options & bit(option)) != 0; }

void BatchJob::set_option(BatchOption option, bool is_on) {
  const unsigned others = options & ~(unsigned{bit(option)} | excluded_by(option));
  options = static_cast<std::uint16_t>(is_on ? others | bit(option) : others);
}

bool BatchJob::can_edit_level() const {
  return has(BatchOption::normalize) || has(BatchOption::level);
}

bool BatchJob::can_edit_bottom() const {
  return has(BatchOption::auto_crop) || has(BatchOption::simple_fade);
}

std::uint8_t BatchJob::usable_bottom() const {
  return batch_bottom <= highest_bottom ? batch_bottom : 0;
}

std::size_t BatchJob::selected_count() const {
  return static_cast<std::size_t>(std::ranges::count_if(items, &BatchItem::is_selected));
}

std::string BatchJob::level_text() const {
  const double decibels = (batch_level - level_of_0_db) * 15 / 10.0;
  return fmt::format("{:+.1f} dB", decibels);
}

int batch_compare(const BatchItem& a, const BatchItem& b, BatchColumn column, bool descending) {
  const auto compare_sizes = [&] {
    // By length first: more digits are more bytes.
    if (a.size_text.size() != b.size_text.size())
      return a.size_text.size() < b.size_text.size() ? -1 : 1;
    return sign_of(a.size_text.compare(b.size_text));
  };
  int order = 0;
  switch (column) {
    case BatchColumn::file:
      order = compare_names(a.name, b.name);
      break;
    case BatchColumn::size:
      order = compare_sizes();
      break;
    case BatchColumn::modified:  // the newest come first
      order = -sign_of(a.date_text.compare(b.date_text));
      break;
  }
  return descending ? -order : order;
}

}  // namespace corvelin
