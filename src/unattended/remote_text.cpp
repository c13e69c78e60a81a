// SPDX-License-Identifier: GPL-2.0-or-later
// The fixed lines of the remote control file.
#include "unattended/remote_text.h"

#include <fmt/format.h>

#include "platform/text/text.h"

namespace corvelin {

namespace {

constexpr std::string_view first_line = "[Corvelin remote control txt file]";
constexpr std::string_view prompt = "COMMAND:";

struct RemoteWord {
  std::string_view word;
  RemoteCommand command;
};

// The first one of these that is found decides.
constexpr RemoteWord words[] = {{"-trec", RemoteCommand::record_by_level},
                                {"-rec", RemoteCommand::record},
                                {"-stop", RemoteCommand::stop},
                                {"-save", RemoteCommand::save},
                                {"-quit", RemoteCommand::quit}};

constexpr std::string_view note =
    "This file is a simple recording remote control by network folder access. If \"Txt file remote "
    "control\" is enabled, this file will be scanned for a COMMAND every 30 seconds. After "
    "executing the command, the file will be rewritten. The file is located in the current "
    "recording folder. To rewrite this file for status refresh, simply delete it. This is an "
    "experimental feature, no translation is provided.";

// Editors elsewhere may put a mark of UTF-8 in front.
std::string_view without_mark(std::string_view text) {
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  return text.starts_with(mark) ? text.substr(mark.size()) : text;
}

std::string with_crlf(std::string_view text) {
  std::string lines;
  for (const char c : text) lines += c == '\n' ? std::string("\r\n") : std::string(1, c);
  return lines;
}

// The file is read on systems of any kind, in the code page that all of them know.
std::string as_code_page(std::string_view utf8) {
  return wide_to_bytes(bytes_to_wide(utf8, true), false);
}

}  // namespace

bool is_remote_file(std::string_view head) {
  head = without_mark(head);
  return head.starts_with(first_line) || head.starts_with(prompt);
}

std::optional<RemoteCommand> remote_command(std::string_view head) {
  if (!is_remote_file(head)) return std::nullopt;
  head = head.substr(0, remote_head_size);
  for (const RemoteWord& known : words)
    if (head.find(known.word) != std::string_view::npos) return known.command;
  return std::nullopt;
}

std::string remote_file_text(std::string_view state) {
  return as_code_page(
      with_crlf(fmt::format("{}\n\n"
                            "{} \n\n"
                            "Available commands:\n\n"
                            "  -rec    \tStart recording\n"
                            "  -trec   \tStart threshold recording\n"
                            "  -stop \tStop\n"
                            "  -save \tSave project file (current name)\n"
                            "  -quit   \tQuit Corvelin\n\n"
                            "STATUS: {}\n\n{}\n",
                            first_line, prompt, state, note)));
}

}  // namespace corvelin
