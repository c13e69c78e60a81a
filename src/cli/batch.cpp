// SPDX-License-Identifier: GPL-2.0-or-later
// Files, work, results.
#include "cli/batch.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "audio/stretch_peaks.h"
#include "cli/batch_record.h"
#include "cli/batch_words.h"
#include "cli/batch_workers.h"
#include "cli/line_reader.h"
#include "cli/messages.h"
#include "cli/progress_line.h"
#include "edit/editor.h"
#include "platform/files/file.h"
#include "platform/files/folder_list.h"
#include "platform/processes/interruption.h"
#include "platform/text/path.h"
#include "platform/text/text.h"
#include "settings/settings.h"
#include "unattended/batch_leftovers.h"
#include "unattended/batch_run.h"

namespace corvelin {

namespace {

bool refuse(const std::string& text) {
  complain(text);
  return false;
}

bool can_work_in(const std::string& folder) {
  const FileFacts facts = file_facts(folder);
  if (!facts.found) return refuse(folder + ": No such folder");
  if (!facts.is_folder) return refuse(folder + ": Not a folder");
  return can_list_folder(folder) || refuse(folder + ": Permission denied");
}

bool can_write_to(const std::string& folder) {
  if (const std::error_code error = create_folders(folder))
    return refuse(folder + ": " + error.message());
  return file_facts(folder).is_folder || refuse(folder + ": Not a folder");
}

// A name of a list that no file can have is told, as it is not the list that it seems.
bool take_list(const BatchRequest& request, BatchJob& job) {
  constexpr std::size_t longest_path = 4095;  // bytes, as the system has it
  const std::string name = request.list == "-" ? "standard input" : request.list;
  LineReader reader;
  std::error_code error = reader.open(request.list, request.list_end);
  std::string line;
  while (!error) {
    const LineReader::Read read = reader.next(line);
    if (read == LineReader::Read::end) break;
    if (request.list_end == '\n' && line.ends_with('\r')) line.pop_back();
    if (read == LineReader::Read::too_long || line.size() > longest_path ||
        line.find('\0') != std::string::npos)
      return refuse(fmt::format("{}:{}: this is no name of a file", name, reader.number()));
    if (is_leftover(name_of(line)))
      job.leftovers.push_back(line);
    else if (!line.empty())
      job.items.push_back({.name = line});
  }
  if (!error) error = reader.error();
  if (interruption() != 0) return false;
  return !error || refuse(fmt::format("{}: {}", name, error.message()));
}

bool take_files(const BatchRequest& request, BatchJob& job) {
  if (request.list.empty()) {
    if (!can_work_in(job.source_folder)) return false;
    job.source_folder = in_current_folder(job.source_folder);
    job.scan_batch_folder();
    if (!job.source_fault.empty()) return refuse(job.source_fault);
  } else if (!take_list(request, job)) {
    return false;
  }
  offer_removal_of_leftovers(job);
  for (const std::string& name : job.leftovers) complain(told_of_leftover(name));
  if (job.items.empty() && request.list.empty())
    complain(fmt::format("there is no audio file in {} that fits {}", job.source_folder, job.mask));
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

// Writes a line of the record. Returns why it could not be written.
std::string record(const std::string& line) {
  print(line);
  if (flush_output()) return {};
  return "the record could not be written";
}

// A line a file, as it comes; where standard output is for JSON, only for a person who watches.
class Progress {
 public:
  Progress(std::size_t count, BatchReport report, const std::string& folder)
      : count_(count), report_(report), folder_(folder) {}

  void tell_of(const BatchResult& result) {
    const std::string place =
        fmt::format("{:{}} / {}  ", ++number_, std::to_string(count_).size(), count_);
    if (report_ == BatchReport::json_lines) record(record_line(result, folder_));
    if (report_ == BatchReport::table) {
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
  BatchReport report_;
  const std::string& folder_;
  // On one terminal the line beside the message would say the same.
  bool is_line_enough_ =
      report_ == BatchReport::table && ::isatty(STDOUT_FILENO) != 0 && ::isatty(STDERR_FILENO) != 0;
  std::size_t number_ = 0;
  ProgressLine line_;
};

// Leaves out what earlier runs have done. A file of which only its change tells that it is done is
// told once more, with that as a result.
bool leave_out_done(const BatchRequest& request, BatchJob& job, std::vector<BatchResult>& results) {
  if (request.earlier_runs.empty()) return true;
  EarlierRuns runs;
  if (const std::error_code error = runs.read(request.earlier_runs))
    return refuse(fmt::format("{}: {}", request.earlier_runs, error.message()));
  if (request.report == BatchReport::json_lines && runs.ends_in_line()) print("\n");
  std::vector<BatchItem> left;
  Progress progress(job.items.size(), request.report, job.source_folder);
  for (BatchItem& item : job.items) {
    EarlierRuns::Answer answer = runs.ask(job.source_folder + item.name);
    if (answer.is_by_change) {
      results.push_back({.name = item.name,
                         .outcome = BatchOutcome::written,
                         .target = answer.begun_target,
                         .reason = "has changed since a run that was ended began with it, and so "
                                   "counts as done"});
      progress.tell_of(results.back());
    }
    if (answer.is_done) continue;
    item.begun_target = std::move(answer.begun_target);
    left.push_back(std::move(item));
  }
  job.items = std::move(left);
  return true;
}

// What is said of a replacement outlives it: a run that is begun again then knows of it.
BatchStartHook recorder_of_starts(const BatchRequest& request, const BatchJob& job) {
  if (request.report != BatchReport::json_lines) return nullptr;
  return [&job](const BatchStart& start) {
    std::string fault = record(record_line(start, job.source_folder));
    if (fault.empty() && !sync_output()) fault = "the record could not be written";
    return fault;
  };
}

// A join, or one file after the other in this process.
std::vector<BatchResult> work_in_turn(const BatchJob& job, const BatchListener& listener) {
  bool is_refused = false;
  const BatchStartHook before_writing = [&](const BatchStart& start) {
    std::string refusal = listener.before_writing ? listener.before_writing(start) : "";
    is_refused = !refusal.empty();
    return refusal;
  };
  Editor editor;
  BatchRun run(editor, job, nullptr, before_writing);
  std::size_t told = 0;
  bool goes_on = true;
  while (goes_on) {
    goes_on = run.step();
    if (is_refused) run.cancel();
    while (told < run.results().size()) listener.tell(run.results()[told++]);
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

bool run_batch(BatchRequest request) {
  BatchJob& job = request.job;
  outlive_readers();
  if (request.report == BatchReport::json_lines && !lock_output())
    return refuse("another run is still writing this record");
  if (job.batch_bottom == no_bottom_given)
    job.batch_bottom = static_cast<std::uint8_t>(
        std::min<unsigned>(settings.lowest_gain, BatchJob::highest_bottom));
  std::vector<BatchResult> results;
  if (!take_files(request, job) || !leave_out_done(request, job, results)) return false;
  if (!job.dest_folder.empty()) {
    if (!can_write_to(job.dest_folder)) return false;
    job.dest_folder = in_current_folder(job.dest_folder);
  }

  const std::size_t joined_file = job.has(BatchOption::join) ? 1 : 0;
  Progress progress(job.items.size() + joined_file, request.report, job.source_folder);
  const BatchListener listener = {
      .tell = [&progress](const BatchResult& result) { progress.tell_of(result); },
      .in_order = request.report != BatchReport::json_lines,
      .before_writing = recorder_of_starts(request, job)};
  std::vector<BatchResult> done;
  if (can_run_side_by_side(job)) {
    stretch_peaks_on_two_cores = false;  // each file has its own
    const unsigned cores = std::max(1U, std::thread::hardware_concurrency());
    done = work_side_by_side(job, request.jobs == 0 ? cores : request.jobs, listener);
  } else {
    done = work_in_turn(job, listener);
  }
  std::ranges::move(done, std::back_inserter(results));
  if (request.report == BatchReport::json) print_json(job, results);
  if (request.report == BatchReport::table) print_table(results);
  return count_of(results, BatchOutcome::failed) == 0 &&
         count_of(results, BatchOutcome::stopped) == 0;
}

}  // namespace corvelin
