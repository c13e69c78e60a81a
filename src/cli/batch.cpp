// Folder, work, results.
#include "cli/batch.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "audio/stretch_peaks.h"
#include "cli/batch_words.h"
#include "cli/batch_workers.h"
#include "cli/messages.h"
#include "cli/progress_line.h"
#include "platform/file.h"
#include "platform/folder_list.h"
#include "platform/path.h"
#include "platform/text.h"
#include "settings/settings.h"
#include "unattended/batch_leftovers.h"
#include "unattended/batch_run.h"

namespace corvelin {

namespace {

bool refuse(const std::string& text) {
  complain(text);
  return false;
}

bool can_begin(BatchJob& job) {
  const FileFacts facts = file_facts(job.source_folder);
  if (!facts.found) return refuse(job.source_folder + ": No such folder");
  if (!facts.is_folder) return refuse(job.source_folder + ": Not a folder");
  if (!can_list_folder(job.source_folder)) return refuse(job.source_folder + ": Permission denied");
  if (job.dest_folder.empty()) return true;
  if (const std::error_code error = create_folders(job.dest_folder))
    return refuse(job.dest_folder + ": " + error.message());
  if (!file_facts(job.dest_folder).is_folder) return refuse(job.dest_folder + ": Not a folder");
  return true;
}

std::string line_of(const BatchResult& result) {
  std::string line = fmt::format("{:9}  {}", name_of(result.outcome), result.name);
  if (!result.target.empty()) line += " -> " + result.target;
  if (!result.reason.empty()) line += ": " + result.reason;
  return printable(on_one_line(std::move(line)));
}

// Of a file that failed, that lost bad data, or that a run left half written when it was stopped.
bool has_fault(const BatchResult& result) {
  return result.outcome == BatchOutcome::failed || !result.reason.empty();
}

std::string fault_of(const BatchResult& result) {
  return on_one_line(result.name + ": " + result.reason);
}

// A line a file, as it comes; where standard output is for JSON, only for a person who watches.
class Progress {
 public:
  Progress(std::size_t count, bool prints_lines) : count_(count), prints_lines_(prints_lines) {}

  void tell_of(const BatchResult& result) {
    const std::string place =
        fmt::format("{:{}} / {}  ", ++number_, std::to_string(count_).size(), count_);
    if (prints_lines_) {
      print(place + line_of(result) + "\n");
      flush_output();
    } else {
      line_.show(place + result.name);
    }
    if (!has_fault(result) || is_line_enough_) return;
    line_.clear();
    complain(fault_of(result));
  }

 private:
  std::size_t count_;
  bool prints_lines_;
  // On one terminal the line beside the message would say the same.
  bool is_line_enough_ =
      prints_lines_ && ::isatty(STDOUT_FILENO) != 0 && ::isatty(STDERR_FILENO) != 0;
  std::size_t number_ = 0;
  ProgressLine line_;
};

// A join, or one file after the other in this process.
std::vector<BatchResult> work_in_turn(const BatchJob& job, Progress& progress) {
  BatchRun run(job);
  std::size_t told = 0;
  bool goes_on = true;
  while (goes_on) {
    goes_on = run.step();
    while (told < run.results().size()) progress.tell_of(run.results()[told++]);
  }
  return run.results();
}

std::size_t count_of(const std::vector<BatchResult>& results, BatchOutcome outcome) {
  return static_cast<std::size_t>(std::ranges::count(results, outcome, &BatchResult::outcome));
}

// How many files came to what. Those with a fault are named once more: of thousands of lines nobody
// reads the ones in the middle.
void print_table(const std::vector<BatchResult>& results) {
  print("\n");
  for (const BatchOutcome outcome :
       {BatchOutcome::written, BatchOutcome::split, BatchOutcome::unchanged, BatchOutcome::joined,
        BatchOutcome::unjoined, BatchOutcome::failed, BatchOutcome::stopped}) {
    const std::size_t count = count_of(results, outcome);
    if (count != 0) print(fmt::format("{:9} {:6}\n", name_of(outcome), count));
    for (const BatchResult& result : results)
      if (result.outcome == outcome && has_fault(result))
        print("  " + printable(fault_of(result)) + "\n");
  }
}

void print_json(const BatchJob& job, const std::vector<BatchResult>& results) {
  using Json = nlohmann::ordered_json;
  const auto text_or_null = [](const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
  };
  Json list = Json::array();
  for (const BatchResult& result : results)
    list.push_back({{"name", result.name},
                    {"outcome", name_of(result.outcome)},
                    {"target", text_or_null(result.target)},
                    {"reason", text_or_null(result.reason)}});
  const Json report = {{"folder", job.source_folder},
                       {"written", count_of(results, BatchOutcome::written)},
                       {"failed", count_of(results, BatchOutcome::failed)},
                       {"results", std::move(list)}};
  print(report.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n");
}

}  // namespace

bool run_batch(BatchJob job, unsigned jobs, bool prints_json) {
  if (!can_begin(job)) return false;
  outlive_readers();
  if (job.batch_bottom == no_bottom_given)
    job.batch_bottom = static_cast<std::uint8_t>(
        std::min<unsigned>(settings.lowest_gain, BatchJob::highest_bottom));
  job.source_folder = in_current_folder(job.source_folder);
  if (!job.dest_folder.empty()) job.dest_folder = in_current_folder(job.dest_folder);
  job.scan_batch_folder();
  if (!job.source_fault.empty()) return refuse(job.source_fault);
  offer_removal_of_leftovers(job);
  for (const std::string& name : job.leftovers) complain(told_of_leftover(name));
  if (job.items.empty())
    complain(fmt::format("there is no audio file in {} that fits {}", job.source_folder, job.mask));

  if (jobs == 0) jobs = std::max(1U, std::thread::hardware_concurrency());
  const std::size_t joined_file = job.has(BatchOption::join) ? 1 : 0;
  Progress progress(job.items.size() + joined_file, !prints_json);
  const auto tell_of = [&progress](const BatchResult& result) { progress.tell_of(result); };
  std::vector<BatchResult> results;
  if (can_run_side_by_side(job)) {
    stretch_peaks_on_two_cores = false;  // each file has its own
    results = work_side_by_side(job, jobs, tell_of);
  } else {
    results = work_in_turn(job, progress);
  }
  if (prints_json) {
    print_json(job, results);
  } else {
    print_table(results);
  }
  return count_of(results, BatchOutcome::failed) == 0 &&
         count_of(results, BatchOutcome::stopped) == 0;
}

}  // namespace corvelin
