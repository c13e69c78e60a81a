// SPDX-License-Identifier: GPL-2.0-or-later
// The box of a refusal.
#include "edit/outcome.h"

#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

Outcome refuse(std::string_view reason) {
  return {Result::refused, MessageBox{.caption = std::string(ui_text(row::not_possible)),
                                      .text = std::string(reason),
                                      .icon = BoxIcon::error}};
}

}  // namespace corvelin
