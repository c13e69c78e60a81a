// SPDX-License-Identifier: GPL-2.0-or-later
// A row a word.
#include "cli/batch_words.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <string_view>
#include <vector>

#include "cli/nearest_word.h"

namespace corvelin {

namespace {

// Takes the value behind the "=". False for one that is none.
using TakeValue = bool (*)(std::string_view value, BatchJob& job);

std::optional<int> whole_number(std::string_view text, int lowest, int highest) {
  if (text.starts_with('+')) text.remove_prefix(1);
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool is_number = error == std::errc{} && end == text.data() + text.size();
  if (!is_number || number < lowest || number > highest) return std::nullopt;
  return number;
}

// As long as the fields of the dialog are.
bool is_seconds(std::string_view text) {
  constexpr std::size_t longest = 7;
  return !text.empty() && text.size() <= longest && text != "." &&
         text.find_first_not_of("0123456789.") == std::string_view::npos &&
         std::ranges::count(text, '.') <= 1;
}

bool take_seconds(std::string_view value, BatchJob& job) {
  job.limit_seconds = value;
  return is_seconds(value);
}

bool take_pair(std::string_view value, std::string& begin, std::string& end) {
  const std::size_t colon = value.find(':');
  if (colon == std::string_view::npos) return false;
  begin = value.substr(0, colon);
  end = value.substr(colon + 1);
  return is_seconds(begin) && is_seconds(end);
}

bool take_cut(std::string_view value, BatchJob& job) {
  return take_pair(value, job.cut_begin, job.cut_end);
}

bool take_fade(std::string_view value, BatchJob& job) {
  return take_pair(value, job.fade_begin, job.fade_end);
}

bool take_level(std::string_view value, BatchJob& job) {
  constexpr int zero = BatchJob::level_of_0_db;
  const auto steps = whole_number(value, -zero, BatchJob::highest_level - zero);
  job.batch_level = static_cast<std::uint8_t>(zero + steps.value_or(0));
  return steps.has_value();
}

bool take_bottom(std::string_view value, BatchJob& job) {
  const auto decibels = whole_number(value, 0, BatchJob::highest_bottom);
  job.batch_bottom = static_cast<std::uint8_t>(decibels.value_or(0));
  return decibels.has_value();
}

bool take_join_name(std::string_view value, BatchJob& job) {
  job.join_name = value;
  return !value.empty() && value.find('/') == std::string_view::npos;
}

struct BatchWord {
  std::string_view word;
  std::string_view value;  // what is written behind it; empty: nothing
  BatchOption option;      // `overwrite_originals`: none
  bool needs_value;
  TakeValue take;
  std::string_view help;
};

constexpr BatchWord words[] = {
    {"save", "", BatchOption::only_save, false, nullptr, "only save"},
    {"normalize", "=STEPS", BatchOption::normalize, false, take_level,
     "bring the level to full scale, or so many steps of 1.5 dB beside it"},
    {"level", "=STEPS", BatchOption::level, true, take_level, "change the level"},
    {"cut", "=BEGIN:END", BatchOption::cut, true, take_cut, "cut seconds off both ends"},
    {"fade", "=BEGIN:END", BatchOption::simple_fade, true, take_fade, "fade in and out, seconds"},
    {"limit", "=SECONDS", BatchOption::limit_length, true, take_seconds, "cut off what is longer"},
    {"autocrop", "", BatchOption::auto_crop, false, nullptr, "cut the silence off both ends"},
    {"pausesplit", "", BatchOption::pause_detection, false, nullptr, "split at the pauses"},
    {"autocue", "", BatchOption::auto_cue, false, nullptr, "split by the clock"},
    {"join", "=NAME", BatchOption::join, true, take_join_name,
     "join all to one file; NAME gets their extension"},
    {"skip_unchanged", "", BatchOption::skip_unchanged, false, nullptr,
     "save only what was changed"},
    {"bottom", "=DB", BatchOption::overwrite_originals, true, take_bottom,
     "the level below full scale where fades begin and silence ends"},
};

std::string unknown_word(std::string_view name) {
  std::vector<std::string_view> known;
  for (const BatchWord& row : words) known.push_back(row.word);
  return fmt::format("--do: there is no word {}{}", name, did_you_mean(name, known));
}

// The word before that the options lost by taking another one.
std::string_view lost_word(std::uint16_t before, std::uint16_t now) {
  const unsigned lost = before & ~unsigned{now};
  const auto* const row = std::ranges::find_if(words, [lost](const BatchWord& word) {
    return (lost & static_cast<unsigned>(word.option)) != 0;
  });
  return row == std::end(words) ? std::string_view{} : row->word;
}

}  // namespace

std::string take_batch_word(const std::string& word, BatchJob& job) {
  const std::size_t equal = std::min(word.find('='), word.size());
  const std::string_view name = std::string_view(word).substr(0, equal);
  const auto* const row = std::ranges::find(words, name, &BatchWord::word);
  if (row == std::end(words)) return unknown_word(name);
  const bool has_value = equal < word.size();
  const bool is_taken =
      has_value ? row->take != nullptr && row->take(std::string_view(word).substr(equal + 1), job)
                : !row->needs_value;
  if (!is_taken) {
    const std::string value = row->needs_value     ? std::string(row->value)
                              : row->value.empty() ? ""
                                                   : fmt::format("[{}]", row->value);
    return fmt::format("--do: {} is no {}{}", word, name, value);
  }
  if (row->option == BatchOption::overwrite_originals) return {};
  const std::uint16_t before = job.options;
  job.set_option(row->option, true);
  const std::string_view lost = lost_word(before, job.options);
  return lost.empty() ? std::string()
                      : fmt::format("--do: {} and {} exclude each other", lost, name);
}

std::string batch_help() {
  std::string text = "What to do with each:";
  for (const BatchWord& row : words) {
    const bool is_optional = !row.needs_value && !row.value.empty();
    text += fmt::format("\n{}{}{}{}: {}", row.word, is_optional ? "[" : "", row.value,
                        is_optional ? "]" : "", row.help);
  }
  return text;
}

}  // namespace corvelin
