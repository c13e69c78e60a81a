// The run of the program that knows MP4.
#include "exchange/extract_aac.h"

#include <fmt/format.h>

#include <string>
#include <utility>

#include "platform/child_process.h"
#include "platform/file.h"
#include "platform/host.h"
#include "platform/path.h"
#include "platform/replacing_file.h"
#include "platform/system_calls.h"
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

  std::error_code begin(const std::string& source, const std::string& written) {
    written_ = written;
    // Without "file:" a name such as "concat:a.m4a" would mean something else to the program.
    return child_.start({settings.ffmpeg, "-nostdin", "-hide_banner", "-loglevel", "error", "-y",
                         "-i", "file:" + source, "-vn", "-acodec", "copy", "-f", "adts",
                         "file:" + written_});
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
  [[nodiscard]] std::string_view complaints() const { return child_.complaints(); }

 private:
  ChildProcess child_;
  std::string target_;
  std::string written_;
  bool is_cancelled_ = false;
};

bool may_write(const std::string& target) {
  if (!is_name_taken(target)) return true;
  return host().show_message_box(
             {.caption = std::string(ui_text(row::warning)),
              .text = fmt::format("{}\n\n{}", ui_text(row::file_exists), target),
              .icon = BoxIcon::warning,
              .buttons = BoxButtons::ok_cancel,
              .default_answer = BoxAnswer::cancel}) == BoxAnswer::ok;
}

// Puts what was made in the place of its target. Why that can't be, or an empty text.
std::string take_over(const ExtractRun& run, const std::string& written,
                      const std::string& target) {
  if (file_facts(written).size == 0)
    return run.complaints().empty() ? "No audio track was found." : std::string(run.complaints());
  if (system_calls.rename(written.c_str(), target.c_str()) == 0) return {};
  return last_error().message();
}

void report_failure(const std::string& source, const std::string& reason) {
  show_error(fmt::format("{}\n{}: {}", source, settings.ffmpeg, reason));
}

}  // namespace

std::optional<std::string> extract_aac(const std::string& source) {
  if (settings.ffmpeg.empty()) return std::nullopt;
  const std::string target = with_extension(source, ".aac");
  if (!may_write(target)) return std::nullopt;

  // What is there already is lost only where something came of it.
  const std::string written = name_beside(behind_links(target));
  ExtractRun run(target);
  if (const std::error_code error = run.begin(source, written)) {
    report_failure(source, error.message());
    return std::nullopt;
  }
  drive(run);
  const std::string fault = run.is_cancelled() ? "" : take_over(run, written, behind_links(target));
  if (!run.is_cancelled() && fault.empty()) {
    // On a full disk the program may complain and end as if all were well.
    if (!run.has_succeeded() || !run.complaints().empty())
      report_failure(source,
                     fmt::format("{} {} whole: {}", target,
                                 run.has_succeeded() ? "may not be" : "is not", run.complaints()));
    return target;
  }
  remove_file(written);
  if (!run.is_cancelled()) report_failure(source, fault);
  return std::nullopt;
}

}  // namespace corvelin
