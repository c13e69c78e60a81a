// SPDX-License-Identifier: GPL-2.0-or-later
// What a batch is to do: the folder and its files in the order of work, the options, which exclude
// one another, and where the results go. The run itself is in batch_run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvelin {

struct Editor;

enum class BatchOption : std::uint16_t {
  only_save = 1,
  normalize = 2,
  cut = 4,
  simple_fade = 8,
  pause_detection = 16,
  auto_cue = 32,
  join = 64,
  auto_crop = 128,
  limit_length = 256,
  skip_unchanged = 512,
  level = 1024,
  overwrite_originals = 8192,  // else the results go to a folder, or beside their sources
};

struct BatchItem {
  std::string name;  // in the source folder; of a list, as it stands there, with its folders
  std::uint64_t size = 0;
  std::string size_text;  // "12.34 MB"
  std::string date_text;  // of the last writing: "2026-03-09  08:15:00"
  bool is_selected = true;

  /// What an earlier run, which was ended before it was done, began to write for this file. It is
  /// not all there, and is replaced. Empty for nothing.
  std::string begun_target;
};

/// The columns of the list by which it can be sorted.
enum class BatchColumn : std::uint8_t { file = 0, size = 1, modified = 2 };

/// What is typed.
enum class BatchField : std::uint8_t {
  source,  // the folder or the mask
  limit_seconds,
  cut_begin,
  cut_end,
  fade_begin,
  fade_end,
  join_name,
};

constexpr BatchField batch_fields[] = {
    BatchField::source,     BatchField::limit_seconds, BatchField::cut_begin, BatchField::cut_end,
    BatchField::fade_begin, BatchField::fade_end,      BatchField::join_name};

struct BatchJob {
  static constexpr std::uint8_t level_of_0_db = 16;
  static constexpr std::uint8_t highest_level = 48;
  static constexpr std::uint8_t highest_bottom = 90;  // dB

  std::string source_folder;  // with its "/"; empty for a list of files from many folders
  std::string mask = "*.mp3";
  std::vector<BatchItem> items;        // in the order of work
  std::vector<std::string> leftovers;  // of saves, in the folder: not among the items
  std::string source_fault;            // why there are none; empty when the folder was read
  std::uint16_t options = 0;           // values of `BatchOption`
  std::string limit_seconds;           // texts as they are typed; an empty one means 0
  std::string cut_begin;
  std::string cut_end;
  std::string fade_begin;
  std::string fade_end;
  std::uint8_t batch_level = level_of_0_db;  // in steps of 1.5 dB from -24 dB on
  std::uint8_t batch_bottom = 0;             // dB below full scale, 0 to 90
  std::string join_name;                     // without an extension
  std::string dest_folder;                   // empty: beside the sources
  BatchColumn sort_column = BatchColumn::file;
  bool sort_descending = false;

  /// What a dialog or a run starts with: the folder of before or the user's own, empty fields of
  /// seconds, a level of 0 dB, and the files of the folder.
  void begin(const Editor& editor);

  /// Reads the folder anew: the files of the mask with an extension that is audio, all selected,
  /// sorted. None, and `source_fault`, when folder or mask can't be taken or the folder can't be
  /// read to its end.
  void scan_batch_folder();

  /// Why what stands in a field can't be taken: a run doesn't begin with it. Empty when it can, and
  /// for a field whose option is off.
  [[nodiscard]] std::string fault_in(BatchField field) const;

  /// Sorts by a column; by the same one again, the other way round.
  void sort_by(BatchColumn column);

  /// Moves the selected items, in their order, in front of the item `before`.
  void move_selected(std::size_t before);

  [[nodiscard]] bool has(BatchOption option) const;

  /// Turns an option on or off. Either way those that exclude it go.
  void set_option(BatchOption option, bool is_on);

  /// Whether the fields that belong to an option can be edited.
  [[nodiscard]] bool can_edit_level() const;
  [[nodiscard]] bool can_edit_bottom() const;

  /// `batch_bottom`, or 0 for one that is none.
  [[nodiscard]] std::uint8_t usable_bottom() const;

  [[nodiscard]] std::size_t selected_count() const;
  [[nodiscard]] std::string level_text() const;  // "+1.5 dB"

 private:
  void sort();
};

/// The seconds in a field, with a comma or a point in front of their fraction; 0 for an empty one.
/// Nothing for what is no number.
std::optional<double> read_seconds(std::string_view field);

/// The order of the list: below 0, 0 or above as `a` comes before, with or behind `b`.
int batch_compare(const BatchItem& a, const BatchItem& b, BatchColumn column, bool descending);

}  // namespace corvelin
