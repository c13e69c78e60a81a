// SPDX-License-Identifier: GPL-2.0-or-later
// The entry of corvelin.
#include <csignal>
#include <cstdio>
#include <new>

#include "desktop/desktop_run.h"
#include "edit/editor.h"
#include "platform/files/standard_descriptors.h"

int main(int argc, char** argv) {
  corvelin::fill_standard_descriptors();
  // A file that hits a size limit is a failed write with a message, not the end of the process.
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    corvelin::Editor editor;
    return corvelin::run_desktop(editor, argc, argv);
  } catch (const std::bad_alloc&) {
    std::fputs("corvelin: There is not enough memory.\n", stderr);
    return 1;
  }
}
