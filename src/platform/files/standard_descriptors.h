// SPDX-License-Identifier: GPL-2.0-or-later
// The descriptors 0 to 2, which a caller of the program may have closed.
#pragma once

namespace corvelin {

/// Gives each of them that is closed something that can be neither read nor written. Otherwise the
/// first files to be opened would get these numbers, and a message would land in one. For the very
/// start of a program.
void fill_standard_descriptors();

}  // namespace corvelin
