// SPDX-License-Identifier: GPL-2.0-or-later
// The entry of corvelin-cli.
#include <csignal>
#include <cstdio>
#include <new>

#include "cli/headless_run.h"
#include "platform/files/standard_descriptors.h"
#include "platform/processes/interruption.h"

int main(int argc, char** argv) {
  corvelin::fill_standard_descriptors();
  corvelin::catch_interruptions();
  // A file that hits a size limit is a failed write with a message, not the end of the process.
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    return corvelin::run_headless(argc, argv);
  } catch (const std::bad_alloc&) {
    std::fputs("corvelin-cli: There is not enough memory for that.\n", stderr);
    return 1;
  }
}
