// SPDX-License-Identifier: GPL-2.0-or-later
// Lines of JSON, written and read.
#include "cli/batch_record.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <ctime>
#include <nlohmann/json.hpp>
#include <optional>

#include "cli/line_reader.h"
#include "platform/text/text.h"

namespace corvelin {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view first_key = "{\"name\":";
constexpr std::string_view begun = "begun";

std::string hex(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) text += fmt::format("{:02x}", static_cast<unsigned char>(byte));
  return text;
}

std::optional<std::string> from_hex(std::string_view digits) {
  if (digits.size() % 2 != 0) return std::nullopt;
  std::string bytes;
  for (std::size_t at = 0; at < digits.size(); at += 2) {
    unsigned value = 0;
    const char* const end = digits.data() + at + 2;
    const auto [stop, error] = std::from_chars(digits.data() + at, end, value, 16);
    if (error != std::errc{} || stop != end) return std::nullopt;
    bytes += static_cast<char>(value);
  }
  return bytes;
}

// JSON holds nothing but Unicode, and the name of a file may be any bytes. One that is no UTF-8 is
// told for people, and beside it by its bytes.
void add_path(Json& line, const std::string& key, const std::string& path) {
  line[key] = path.empty() ? Json(nullptr) : Json(path);
  if (wide_to_bytes(bytes_to_wide(path, true), true) != path) line[key + "_bytes"] = hex(path);
}

std::string text_in(const Json& line, const std::string& key) {
  const auto value = line.find(key);
  return value != line.end() && value->is_string() ? value->get<std::string>() : std::string();
}

std::optional<std::string> path_in(const Json& line, const std::string& key) {
  const auto bytes = line.find(key + "_bytes");
  if (bytes != line.end() && bytes->is_string()) return from_hex(bytes->get<std::string>());
  const std::string text = text_in(line, key);
  return text.empty() ? std::nullopt : std::optional(text);
}

std::uint64_t number_in(const Json& line, const std::string& key) {
  const auto value = line.find(key);
  return value != line.end() && value->is_number_unsigned() ? value->get<std::uint64_t>() : 0;
}

// The bytes of a path that are no UTF-8 are replaced here.
std::string dumped(const Json& line) {
  return line.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string time_text(std::timespec time) {
  std::tm utc = {};
  ::gmtime_r(&time.tv_sec, &utc);
  return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:09}Z", utc.tm_year + 1900,
                     utc.tm_mon + 1, utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec,
                     time.tv_nsec);
}

bool is_success(std::string_view outcome) {
  constexpr BatchOutcome successes[] = {BatchOutcome::written, BatchOutcome::split,
                                        BatchOutcome::unchanged, BatchOutcome::joined};
  return std::ranges::any_of(successes, [&](BatchOutcome o) { return name_of(o) == outcome; });
}

}  // namespace

std::string record_line(const BatchResult& result, const std::string& folder) {
  Json line;
  add_path(line, "name", folder + result.name);
  line["outcome"] = name_of(result.outcome);
  add_path(line, "target", result.target);
  line["reason"] = result.reason.empty() ? Json(nullptr) : Json(result.reason);
  return dumped(line);
}

std::string record_line(const BatchStart& start, const std::string& folder) {
  Json line;
  add_path(line, "name", folder + start.name);
  line["outcome"] = begun;
  add_path(line, "target", start.target);
  line["size"] = start.source.size;
  line["time"] = time_text(start.source.write_time);
  line["inode"] = start.source.identity.inode;
  return dumped(line);
}

std::error_code EarlierRuns::read(const std::string& path) {
  LineReader reader;
  if (const std::error_code error = reader.open(path)) return error;
  std::string line;
  for (auto read = reader.next(line); read != LineReader::Read::end; read = reader.next(line)) {
    // Behind what a run that was ended has left of a line another run's first one may stand.
    for (std::size_t at = line.find(first_key); at != std::string::npos;) {
      const std::size_t next = line.find(first_key, at + 1);
      take(std::string_view(line).substr(at, next == std::string::npos ? next : next - at));
      at = next;
    }
    ends_in_line_ = !reader.is_ended();
  }
  return reader.error();
}

void EarlierRuns::take(std::string_view text) {
  const Json line = Json::parse(text, nullptr, false);
  if (!line.is_object()) return;
  const auto name = path_in(line, "name");
  const std::string outcome = text_in(line, "outcome");
  if (!name || outcome.empty()) return;
  Known& known = known_[*name];
  if (is_success(outcome)) known.is_done = true;
  if (outcome != begun) return;  // a process that died with its file may yet have replaced it
  known.is_begun = true;
  known.target = path_in(line, "target").value_or("");
  known.size = number_in(line, "size");
  known.time = text_in(line, "time");
  known.inode = number_in(line, "inode");
}

EarlierRuns::Answer EarlierRuns::ask(const std::string& name) const {
  const auto found = known_.find(name);
  if (found == known_.end()) return {};
  const Known& known = found->second;
  if (known.is_done) return {.is_done = true};
  if (known.is_begun && known.target == name) {
    const FileFacts facts = file_facts(name);
    const bool is_changed =
        facts.found && (facts.size != known.size || facts.identity.inode != known.inode ||
                        time_text(facts.write_time) != known.time);
    if (is_changed) return {.is_done = true, .is_by_change = true, .begun_target = known.target};
  }
  return {.begun_target = known.target};
}

}  // namespace corvelin
