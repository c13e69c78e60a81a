// Text conversions against tables made by hand.
#include "platform/text.h"

#include <gtest/gtest.h>

namespace corvelin::test {
namespace {

TEST(Text, DecodesUtf8AndMarksEachBadByte) {
  EXPECT_EQ(bytes_to_wide("a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x8E\xB5", true), u"aü€🎵");
  EXPECT_EQ(bytes_to_wide("\xC0\xAF", true), u"\uFFFD\uFFFD");            // overlong
  EXPECT_EQ(bytes_to_wide("\xED\xA0\x80", true), u"\uFFFD\uFFFD\uFFFD");  // a surrogate
  EXPECT_EQ(bytes_to_wide("\xE2\x82", true), u"\uFFFD\uFFFD");            // cut off
  EXPECT_EQ(bytes_to_wide("\xF4\x90\x80\x80x", true), u"\uFFFD\uFFFD\uFFFD\uFFFDx");
}

TEST(Text, CodePageIsWindows1252) {
  EXPECT_EQ(bytes_to_wide("\x80\x81\x9F\xA0\xFF", false), u"€\uFFFDŸ\u00A0ÿ");
  EXPECT_EQ(wide_to_bytes(u"€Ÿÿ日🎵", false), "\x80\x9F\xFF??");
}

TEST(Text, EncodesUtf8) {
  EXPECT_EQ(wide_to_bytes(u"aü€🎵", true), "aü€🎵");
  EXPECT_EQ(wide_to_bytes(std::u16string(1, 0xD800) + u"x", true), "\xEF\xBF\xBDx");
}

TEST(Text, HexadecimalPaths) {
  EXPECT_EQ(hex_to_wide("43003A005C00"), u"C:\\");
  EXPECT_EQ(hex_to_wide("43003A"), u"C");  // an incomplete character
  EXPECT_EQ(hex_to_wide("4300zz00"), u"C");
}

TEST(Text, CutsAtWholeCharacters) {
  EXPECT_EQ(cut_to_units("aü🎵b", 4), "aü🎵");
  EXPECT_EQ(cut_to_units("aü🎵b", 3), "aü");
}

TEST(Text, PrintsNoControlCharacters) {
  EXPECT_EQ(printable("a\x1B[31m\r\nb\x7F"), "a?[31m?\nb?");
  EXPECT_EQ(printable("\u009B\u00A0\u00FC\u20AC\xC2"), "?\u00A0\u00FC\u20AC\xC2");
}

TEST(Text, LeadingNumbers) {
  EXPECT_EQ(leading_number(" \t-12x"), -12);
  EXPECT_EQ(leading_number("+7"), 7);
  EXPECT_EQ(leading_number("x7"), 0);
  EXPECT_EQ(leading_number("- 7"), 0);
  EXPECT_EQ(leading_number("99999999999999999999999"), 2147483647);
  EXPECT_EQ(leading_number("-99999999999999999999999"), -2147483648);
}

TEST(Text, LeadingDecimals) {
  EXPECT_EQ(leading_decimal(" 07.5:3"), 7.5);
  EXPECT_EQ(leading_decimal("-.25"), -0.25);
  EXPECT_EQ(leading_decimal("+1e3"), 1);
  EXPECT_EQ(leading_decimal("inf"), 0);
  EXPECT_EQ(leading_decimal("-+1"), 0);
  EXPECT_EQ(leading_decimal("  "), 0);
  EXPECT_GT(leading_decimal(std::string(5000, '9')), 1e299);
  EXPECT_EQ(leading_decimal("0." + std::string(5000, '0') + "1"), 0);
}

}  // namespace
}  // namespace corvelin::test
