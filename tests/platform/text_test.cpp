// SPDX-License-Identifier: GPL-2.0-or-later
// Text conversions against tables made by hand.
#include "platform/text/text.h"

#include <gtest/gtest.h>

#include <utility>

namespace corvelin::test {
namespace {

TEST(Text, DecodesAndEncodes) {
  const std::pair<std::string_view, std::u16string_view> utf8[] = {
      {"a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x8E\xB5", u"aü€🎵"},
      {"\xC0\xAF", u"\uFFFD\uFFFD"},            // overlong
      {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},  // a surrogate
      {"\xE2\x82", u"\uFFFD\uFFFD"},            // cut off
      {"\xF4\x90\x80\x80x", u"\uFFFD\uFFFD\uFFFD\uFFFDx"}};
  for (const auto& [bytes, text] : utf8) EXPECT_EQ(bytes_to_wide(bytes, true), text);
  EXPECT_EQ(wide_to_bytes(u"aü€🎵", true), "aü€🎵");
  EXPECT_EQ(wide_to_bytes(std::u16string(1, 0xD800) + u"x", true), "\xEF\xBF\xBDx");
  EXPECT_EQ(bytes_to_wide("\x80\x81\x9F\xA0\xFF", false), u"€\uFFFDŸ\u00A0ÿ");  // Windows-1252
  EXPECT_EQ(wide_to_bytes(u"€Ÿÿ日🎵", false), "\x80\x9F\xFF??");
  EXPECT_EQ(hex_to_wide("43003A005C00"), u"C:\\");
  EXPECT_EQ(hex_to_wide("43003A"), u"C");  // an incomplete character
  EXPECT_EQ(hex_to_wide("4300zz00"), u"C");
  EXPECT_EQ(cut_to_units("aü🎵b", 3), "aü");  // whole characters
  EXPECT_EQ(cut_to_units(std::u16string(u"aü🎵b"), 3), u"aü");
  EXPECT_EQ(cut_to_units(std::u16string(u"aü🎵b"), 4), u"aü🎵");
  EXPECT_EQ(printable("a\x1B[31m\r\nb\x7F\u009B\u00A0\xC2"), "a?[31m?\nb??\u00A0\xC2");
}

TEST(Text, NumbersAtTheFront) {
  const std::pair<std::string_view, int> whole[] = {{" \t-12x", -12},
                                                    {"+7", 7},
                                                    {"x7", 0},
                                                    {"- 7", 0},
                                                    {"99999999999999999999999", 2147483647},
                                                    {"-99999999999999999999999", -2147483648}};
  for (const auto& [text, number] : whole) EXPECT_EQ(leading_number(text), number);
  const std::pair<std::string_view, double> decimal[] = {
      {" 07.5:3", 7.5}, {"-.25", -0.25}, {"+1e3", 1}, {"inf", 0}, {"-+1", 0}, {"  ", 0}};
  for (const auto& [text, number] : decimal) EXPECT_EQ(leading_decimal(text), number);
  EXPECT_GT(leading_decimal(std::string(5000, '9')), 1e299);
}

}  // namespace
}  // namespace corvelin::test
