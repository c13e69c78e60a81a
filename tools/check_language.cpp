// SPDX-License-Identifier: GPL-2.0-or-later
// Tells translators what their language files lack: check_language FILE...
#include <fmt/format.h>

#include <cstdio>

#include "platform/files/file.h"
#include "shell/language_check.h"

int main(int argc, char** argv) {
  constexpr std::size_t largest_file = 1000000;  // bytes; far beyond what the program reads
  int status = 0;
  for (int i = 1; i < argc; ++i) {
    std::string text;
    if (const std::error_code error = corvelin::read_whole_file(argv[i], largest_file, text)) {
      fmt::print(stderr, "{}: {}\n", argv[i], error.message());
      status = 2;
      continue;
    }
    for (const std::string& fault : corvelin::check_language(text)) {
      fmt::print("{}: {}\n", argv[i], fault);
      if (status == 0) status = 1;
    }
  }
  return status;
}
