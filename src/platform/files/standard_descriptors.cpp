// SPDX-License-Identifier: GPL-2.0-or-later
// Filling of closed descriptors.
#include "platform/files/standard_descriptors.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <initializer_list>

namespace corvelin {

// The lowest free number is what `open` gives, so the order counts. Standard input is only
// written and the other two are only read: whoever uses them learns that they are closed.
void fill_standard_descriptors() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    const bool is_closed = ::fcntl(descriptor, F_GETFD) < 0 && errno == EBADF;
    if (!is_closed) continue;
    const int flags = descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY;
    if (::open("/dev/null", flags) < 0) return;
  }
}

}  // namespace corvelin
