// SPDX-License-Identifier: GPL-2.0-or-later
// The clipboard in a file. It is replaced as a whole, so that another process sees the old text or
// the new one.
#include "platform/files/clipboard.h"

#include <utility>

#include "platform/files/file.h"
#include "platform/files/replacing_file.h"
#include "platform/processes/system.h"

namespace corvelin {

namespace {

constexpr std::size_t largest_text = std::size_t{1} << 20;  // bytes; beyond is nothing of ours

// Empty when the user has no place for it.
std::string file_path() {
  if (!clipboard_file.empty()) return clipboard_file;
  const std::string folder = runtime_folder();
  return folder.empty() ? folder : folder + "/corvelin-clipboard";
}

bool is_clipboard(std::string_view head) { return head.starts_with(clipboard_mark); }

}  // namespace

std::string clipboard_file;

bool write_clipboard_file(std::string_view text) {
  const std::string path = file_path();
  return !path.empty() && !replace_text(path, text, is_clipboard);
}

ClipboardContent read_clipboard_file(std::string& text) {
  const std::string path = file_path();
  if (path.empty()) return ClipboardContent::unavailable;
  if (!file_facts(path).found) return ClipboardContent::no_text;
  std::string content;
  if (read_whole_file(path, largest_text, content)) return ClipboardContent::unreadable;
  if (content.empty()) return ClipboardContent::no_text;
  text = std::move(content);
  return ClipboardContent::text;
}

}  // namespace corvelin
