// AAC decoding by libfaad, through its own C interface. Looked up at run time.
#pragma once

#include <neaacdec.h>

#include <string>

#include "platform/dynamic_library.h"

namespace corvelin {

class Faad {
 public:
  /// Returns the system's words for why the library can't be loaded, or an empty text. One that
  /// lacks an entry is not kept.
  std::string load();
  void unload() { library_.unload(); }
  [[nodiscard]] bool is_loaded() const { return library_.is_loaded(); }

  decltype(&::NeAACDecOpen) NeAACDecOpen = nullptr;
  decltype(&::NeAACDecClose) NeAACDecClose = nullptr;
  decltype(&::NeAACDecGetCurrentConfiguration) NeAACDecGetCurrentConfiguration = nullptr;
  decltype(&::NeAACDecSetConfiguration) NeAACDecSetConfiguration = nullptr;
  decltype(&::NeAACDecInit) NeAACDecInit = nullptr;
  decltype(&::NeAACDecDecode) NeAACDecDecode = nullptr;

 private:
  DynamicLibrary library_;
};

}  // namespace corvelin
