// SPDX-License-Identifier: GPL-2.0-or-later
// The run of the program that knows MP4.
#include "exchange/extract_aac.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <utility>

#include "exchange/mp4_boxes.h"
#include "exchange/save_run.h"
#include "model/document.h"
#include "model/stream_info.h"
#include "opening/file_kind.h"
#include "platform/files/file.h"
#include "platform/files/replacing_file.h"
#include "platform/host.h"
#include "platform/processes/child_process.h"
#include "platform/text/path.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// Waits for the program. Its way is not known, so there is no percentage.
class ExtractRun : public LongRun {
 public:
  explicit ExtractRun(std::string target) : target_(std::move(target)) {}

  std::error_code begin(const std::string& source, const OutputFile& written) {
    // Without "file:" a name such as "concat:a.m4a" would mean something else to the program, and
    // without the format a text that calls itself an MP4 file could have it read other files.
    return child_.start(
        {settings.ffmpeg, "-nostdin", "-hide_banner", "-loglevel", "error", "-xerror", "-f", "mov",
         "-i", "file:" + source, "-vn", "-acodec", "copy", "-f", "adts", "pipe:1"},
        written.descriptor());
  }

  bool step() override {
    return !is_cancelled_ && child_.wait(static_cast<int>(slice_patience.count()));
  }

  void cancel() override {
    is_cancelled_ = true;
    child_.kill();
  }

  [[nodiscard]] int percent_done() const override { return 0; }
  [[nodiscard]] std::string progress_text() const override { return target_; }
  [[nodiscard]] std::string report() const override { return {}; }

  [[nodiscard]] bool is_cancelled() const { return is_cancelled_; }
  [[nodiscard]] bool has_succeeded() const { return child_.has_succeeded(); }
  [[nodiscard]] std::string complaints() const { return std::string(child_.complaints()); }

 private:
  ChildProcess child_;
  std::string target_;
  bool is_cancelled_ = false;
};

bool is_same(const std::string& one, const std::string& other) {
  if (one == other) return true;
  const FileFacts facts = file_facts(one);
  return facts.found && facts.identity == file_facts(other).identity;
}

bool is_source_of_document(const Document& document, const std::string& path) {
  return std::ranges::any_of(document.files,
                             [&](const SourceFile& file) { return is_same(path, file.file_name); });
}

bool may_write(const std::string& target) {
  if (!is_name_taken(target)) return true;
  return host().show_message_box(
             {.caption = std::string(ui_text(row::warning)),
              .text = fmt::format("{}\n\n{}", ui_text(row::file_exists), target),
              .icon = BoxIcon::warning,
              .buttons = BoxButtons::ok_cancel,
              .default_answer = BoxAnswer::cancel}) == BoxAnswer::ok;
}

// What the program answered, in words; an empty text when the whole track came out.
std::string fault_of(const ExtractRun& run, const InputFile& container, std::uint64_t size) {
  if (!run.has_succeeded())
    return run.complaints().empty() ? "It ended before its time." : run.complaints();
  if (size == 0) return run.complaints().empty() ? "No audio track was found." : run.complaints();
  // Between two frames the program takes the end of the file for the end of the track.
  return breaks_off(container) ? "The file breaks off in the middle." : std::string();
}

// Tells a failure, and what is left of the track.
void report_failure(const std::string& source, std::string reason, const ReplacingFile& left) {
  if (left.is_unfinished()) reason += fmt::format("\n{} is not whole.", left.written_name());
  show_error(fmt::format("{}\n{}: {}", source, settings.ffmpeg, reason));
}

bool has_bytes_of(const OutputFile& written, const std::string& path) {
  InputFile file;
  if (file.open(path)) return false;
  std::array<std::uint8_t, 65536> one = {};
  std::array<std::uint8_t, 65536> other = {};
  for (std::uint64_t offset = 0;; offset += one.size()) {
    const std::size_t count = written.read_at(offset, one);
    if (file.read_at(offset, other) != count || one != other) return false;
    if (count < one.size()) return !written.read_error() && !file.read_error();
  }
}

// Puts the whole track in its place, or takes what is there for it. What went wrong, in words.
std::string settle(ReplacingFile& track, bool is_kept) {
  if (!is_kept) {
    const std::error_code error = track.commit();
    return error ? error.message() : std::string();
  }
  const bool is_equal = has_bytes_of(track.file, track.name());
  track.give_up(LeftBeside::goes);
  return is_equal ? std::string()
                  : fmt::format("{} is open and holds another track.", track.name());
}

// Runs the program to its end. Whether the track is in place then.
bool extract(const std::string& source, const InputFile& container, const std::string& target,
             bool is_kept, ReplacingFile& track) {
  std::error_code error =
      track.begin_marked(target, temporary_mark, ".aac", container.facts_at_open().permissions);
  ExtractRun run(target);
  if (!error) error = run.begin(source, track.file);
  if (error) {
    track.give_up(LeftBeside::goes);
    report_failure(source, error.message(), track);
    return false;
  }
  drive(run);
  const std::uint64_t size = file_facts(track.written_name()).size;
  if (run.is_cancelled() || size == 0) track.give_up(LeftBeside::goes);
  if (run.is_cancelled()) return false;
  std::string fault = fault_of(run, container, size);
  if (fault.empty()) {
    fault = settle(track, is_kept);
    if (fault.empty()) return true;
  }
  track.give_up();
  report_failure(source, fault, track);
  return false;
}

}  // namespace

std::optional<std::string> extract_aac(const Document& document, const std::string& source,
                                       std::span<const std::string> kept) {
  if (settings.ffmpeg.empty()) return std::nullopt;
  ReplacingFile track;
  InputFile container;
  if (const std::error_code error = container.open(source)) {
    report_failure(source, error.message(), track);
    return std::nullopt;
  }
  std::string target = with_extension(source, ".aac");
  const bool is_kept =
      is_source_of_document(document, target) ||
      std::ranges::any_of(kept, [&](const std::string& name) { return is_same(target, name); });
  if (!is_kept && !may_write(target)) return std::nullopt;
  if (!extract(source, container, target, is_kept, track)) return std::nullopt;
  return target;
}

std::vector<std::string> extract_tracks(const Document& document,
                                        std::span<const std::string> names) {
  if (document.stream.is_aac == 0 || settings.ffmpeg.empty()) return {names.begin(), names.end()};
  std::vector<std::string> tracks;
  for (const std::string& name : names) {
    std::optional<std::string> track = name;
    if (file_kind(name) == FileKind::mp4) track = extract_aac(document, name, tracks);
    if (!track) break;
    tracks.push_back(std::move(*track));
  }
  return tracks;
}

}  // namespace corvelin
