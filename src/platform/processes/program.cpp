// SPDX-License-Identifier: GPL-2.0-or-later
// The version, which only the build files know.
#include "platform/processes/program.h"

namespace corvelin {

constinit const std::string_view program_version = CORVELIN_VERSION;

}  // namespace corvelin
