// In words what a sighted user reads from the view: for screen readers.
#pragma once

#include <string>

namespace corvelin {

struct ViewDescription {
  std::string graph;     // the place, the part, the selection
  std::string overview;  // the length, the part and its title
  std::string meter;     // the levels
};

/// Empty texts without a document.
ViewDescription describe_view();

}  // namespace corvelin
