// SPDX-License-Identifier: GPL-2.0-or-later
// The run of a batch: each selected file is opened, changed as the options say, saved under a
// derived name and closed, or all are joined into one. Its cuts, fades and levels at a time are its
// own; for all else it drives the records behind the normal dialogs, which press their own buttons
// meanwhile. A file that exists is never written over, but for the sources under "Overwrite
// originals".
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files/file.h"
#include "platform/long_run.h"
#include "unattended/batch_job.h"

namespace corvelin {

struct Editor;

/// What became of a file. `unjoined` is nothing wrong with, but no joined file was made of it.
enum class BatchOutcome : std::uint8_t {
  written,
  split,
  unchanged,
  joined,
  unjoined,
  failed,
  stopped,
};

/// "written", "split", ...
std::string_view name_of(BatchOutcome outcome);

struct BatchResult {
  std::string name;  // of the source, as in `BatchItem`
  BatchOutcome outcome = BatchOutcome::failed;
  std::string target;  // the file or, of a split, the folder that was written; empty for none
  std::string reason;  // of a failure, or what was left out of what was written, on one line
};

/// A line of the results list.
struct BatchProblem {
  std::size_t number = 0;  // of the file and of its result, from 1 on; 0: of the whole run
  std::string line;
};

/// What is about to happen to a file.
struct BatchStart {
  std::string name;    // of the source
  std::string target;  // as in `BatchResult`
  FileFacts source;    // as it was when it was opened
};

/// Is told of it before anything is written. Returns why it may not be done, or nothing.
using BatchStartHook = std::function<std::string(const BatchStart& start)>;

/// Whether the files of a batch have nothing to do with one another, so that several can be worked
/// on at a time: none is joined, and no two can want the same name.
bool can_run_side_by_side(const BatchJob& job);

/// One file a step. What becomes of `job` meanwhile changes nothing in the run.
class BatchRun : public LongRun {
 public:
  /// `between_slices` is called again and again while a file is worked on; it returns whether the
  /// work shall go on.
  BatchRun(Editor& editor, BatchJob job, std::function<bool()> between_slices = nullptr,
           BatchStartHook before_writing = nullptr);
  ~BatchRun() override;
  BatchRun(const BatchRun&) = delete;
  BatchRun& operator=(const BatchRun&) = delete;

  bool step() override;

  /// "Stop": the file under way is finished, no other one begins.
  void cancel() override { is_stopped_ = true; }

  [[nodiscard]] int percent_done() const override;
  [[nodiscard]] std::string progress_text() const override;  // "Processing file: 3 / 12"
  [[nodiscard]] std::string report() const override { return {}; }

  /// A line for each problem: the results list below the progress.
  [[nodiscard]] const std::vector<BatchProblem>& problems() const { return problems_; }
  /// One for each file so far; those of a join come together when it is over, and behind them one
  /// for what they were joined to.
  [[nodiscard]] const std::vector<BatchResult>& results() const { return results_; }

  [[nodiscard]] bool is_over() const { return is_over_; }

  /// Works on one file of a batch whose files stand alone, as a process of its own does.
  BatchResult work_on(const BatchItem& item);

 private:
  void process(const BatchItem& item);
  bool open(BatchResult& result);
  BatchResult begin_join(const BatchItem& item);
  BatchResult join(const BatchItem& item);
  void end_join();
  void settle_join(BatchOutcome outcome);
  void finish();
  BatchResult split(BatchResult result);
  BatchResult save(BatchResult result, const std::string& begun_target);
  void save_to(const std::string& name, bool replaces_source, BatchResult& result);
  bool may_write(BatchResult& result) const;
  [[nodiscard]] std::string target_name(const std::string& name) const;
  void note(const BatchResult& result, std::string_view label);
  void tell(std::string line);
  void tell_of_all(std::string line);

  Editor& editor_;
  const BatchJob job_;
  std::function<bool()> between_slices_;
  BatchStartHook before_writing_;
  std::vector<const BatchItem*> items_;
  std::map<std::string, std::string> same_files_;  // names that lead to the file of another one
  std::size_t number_ = 0;                         // of the file under way, from 1 on
  std::size_t written_ = 0;
  std::string join_target_;  // empty while no join is under way
  bool is_stopped_ = false;
  bool ends_early_ = false;  // a join that failed
  bool is_over_ = false;
  std::vector<BatchProblem> problems_;
  std::vector<BatchResult> joining_;  // told when the join is over
  std::vector<BatchResult> results_;
};

}  // namespace corvelin
