// SPDX-License-Identifier: GPL-2.0-or-later
// Pages for man.
#include "text/man_page.h"

#include <gtest/gtest.h>

namespace corvelin::test {
namespace {

// What groff would take for requests, for typographic signs or for escapes arrives as it was
// written.
TEST(ManPage, TextArrivesAsItWasWritten) {
  ManPage page("some-tool", "does it", "[FILE...]");
  EXPECT_NE(page.text().find(".TH SOME\\-TOOL 1 "), std::string::npos);
  const std::size_t head = page.text().size();
  page.entry("--set 'a=~'", "one \\\n.two \"^`");
  page.example(".first\n'second\n");
  EXPECT_EQ(page.text().substr(head),
            ".TP\n.B \\-\\-set \\[aq]a=\\[ti]\\[aq]\n"
            "one \\[rs]\n.br\n\\&.two \\[dq]\\[ha]\\[ga]\n"
            ".PP\n.EX\n\\&.first\n\\&\\[aq]second\n.EE\n");
}

}  // namespace
}  // namespace corvelin::test
