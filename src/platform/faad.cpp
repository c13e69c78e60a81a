// The six entries of libfaad.
#include "platform/faad.h"

namespace corvelin {

std::string Faad::load() {
  std::string reason = library_.load("libfaad.so.2");
  if (!reason.empty()) return reason;
  const bool is_whole =
      library_.resolve(NeAACDecOpen, "NeAACDecOpen") &&
      library_.resolve(NeAACDecClose, "NeAACDecClose") &&
      library_.resolve(NeAACDecGetCurrentConfiguration, "NeAACDecGetCurrentConfiguration") &&
      library_.resolve(NeAACDecSetConfiguration, "NeAACDecSetConfiguration") &&
      library_.resolve(NeAACDecInit, "NeAACDecInit") &&
      library_.resolve(NeAACDecDecode, "NeAACDecDecode");
  if (!is_whole) library_.unload();
  return {};
}

}  // namespace corvelin
