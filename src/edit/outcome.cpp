// The box of a refusal.
#include "edit/outcome.h"

#include "text/ui_text.h"

namespace corvelin {

Outcome refuse(std::string_view reason) {
  return {Result::refused, MessageBox{.caption = std::string(ui_text(msg, 8)),
                                      .text = std::string(reason),
                                      .icon = BoxIcon::error}};
}

}  // namespace corvelin
