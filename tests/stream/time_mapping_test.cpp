// Times against numbers worked out by hand.
#include "stream/time_mapping.h"

#include <gtest/gtest.h>

#include <limits>

#include "document/open_document.h"
#include "exchange/settings.h"
#include "stream/frame_header.h"

namespace corvelin::test {
namespace {

class TimeMapping : public ::testing::Test {
 protected:
  TimeMapping() {
    reset_state(ResetLevel::start);
    stream.avg_bitrate = 128000;  // 16000 bytes per second
  }
  ~TimeMapping() override { reset_state(ResetLevel::start); }

  // A stream of 25600 bytes whose first 99 % of time take 198/256 of the bytes.
  static void use_seek_table() {
    document.total_size = 25600;
    document.files.resize(1);
    settings.use_toc = 1;
    stream.vbr = vbr_header | vbr_toc_usable;
    for (std::size_t i = 0; i < stream.toc.size(); ++i)
      stream.toc[i] = static_cast<std::uint8_t>(2 * i);
  }
};

TEST_F(TimeMapping, SeekTableBendsTheScale) {
  use_seek_table();
  const std::pair<EditPosition, std::uint32_t> places[] = {
      {0, 0},         // the start
      {100, 128},     // half way to 1 %
      {300, 384},     // half way from 1 % to 2 %
      {200, 256},     // on an entry
      {22000, 25441}  // behind the last entry: (100 - 36 / 58) %
  };
  for (const auto& [pos, scaled] : places) EXPECT_EQ(to_time_scale(pos), scaled) << pos;
  EXPECT_EQ(to_time_scale(25600), 25600U);
  EXPECT_EQ(to_time_scale(25650), 25602U);  // still within 1/256 behind the end
  EXPECT_EQ(to_time_scale(25800), 25800U);
  EXPECT_EQ(to_time_scale(no_position), no_position);

  EXPECT_EQ(from_time_scale(0), 0U);
  EXPECT_EQ(from_time_scale(128), 100U);
  EXPECT_EQ(from_time_scale(384), 300U);
  EXPECT_EQ(from_time_scale(25441), 21997U);  // 198 + 0.37890625 * 58 of 256
  EXPECT_EQ(from_time_scale(25600), 25600U);
  EXPECT_EQ(from_time_scale(0xFFFFFFFF), highest_position);
}

TEST_F(TimeMapping, CorrectionNeedsTheSettingATableAndOneFile) {
  use_seek_table();
  settings.use_toc = 0;
  EXPECT_EQ(to_time_scale(100), 100U);
  settings.use_toc = 1;
  stream.vbr = vbr_header;
  EXPECT_EQ(from_time_scale(128), 128U);
  stream.vbr = vbr_header | vbr_toc_usable;
  document.files.resize(2);
  EXPECT_EQ(to_time_scale(100), 100U);
  document = {};
  EXPECT_EQ(to_time_scale(100), 100U);
}

TEST_F(TimeMapping, AnyTableKeepsTheEndsInPlace) {
  use_seek_table();
  stream.toc.fill(0);
  EXPECT_EQ(to_time_scale(0), 0U);
  EXPECT_EQ(to_time_scale(25600), 25600U);
  stream.toc.fill(255);
  stream.toc[0] = 0;
  EXPECT_EQ(to_time_scale(25600), 25600U);
  EXPECT_EQ(from_time_scale(512), 25500U);  // two equal entries at 255
}

TEST_F(TimeMapping, FormatsTimes) {
  constexpr double rate = 128000;
  EXPECT_EQ(format_time(0, rate), "0'00.00");
  EXPECT_EQ(format_time(80000, rate), "0'05.00");
  EXPECT_EQ(format_time(1048000, rate), "1'05.50");
  EXPECT_EQ(format_time(57599990, rate), "59'60.00");  // 3599999 ms; nothing is carried
  EXPECT_EQ(format_time(57600000, rate), "1:00'00.00");
  EXPECT_EQ(format_time(59608000, rate), "1:02'05.50");
  EXPECT_EQ(format_time(80000, rate, SecondsForm::recorder), "0'05.0");
  settings.show_milisec = 1;
  EXPECT_EQ(format_time(80018, rate), "0'05.001");
  EXPECT_EQ(format_time(59608000, rate), "1:02'05.500");
  EXPECT_EQ(format_time(80000, rate, SecondsForm::recorder), "0'05.0");
}

TEST_F(TimeMapping, AbsurdRatesGiveDefinedTimes) {
  const double infinite = std::numeric_limits<double>::infinity();
  EXPECT_EQ(format_time(1000, 0), "0'00.00");
  EXPECT_EQ(format_time(1000, -1), "0'00.00");
  EXPECT_EQ(format_time(1000, infinite), "0'00.00");
  EXPECT_EQ(format_time(1000, std::numeric_limits<double>::quiet_NaN()), "0'00.00");
  EXPECT_EQ(format_time(1000, 1e-30), "1193:02'47.30");  // 2^32 - 1 ms

  EXPECT_EQ(time_to_position(1.5), 24000U);
  EXPECT_EQ(time_to_position(-1), 0U);
  EXPECT_EQ(time_to_position(1e12), highest_position);
  stream.avg_bitrate = std::numeric_limits<float>::infinity();
  EXPECT_EQ(time_to_position(1), highest_position);
  EXPECT_EQ(time_to_position(0), 0U);
  stream.avg_bitrate = 0;
  EXPECT_EQ(time_to_position(1e300), 0U);
}

struct Typed {
  std::string_view text;
  std::uint32_t bytes;
  std::string_view rest;
};

TEST_F(TimeMapping, ReadsTypedTimes) {
  const Typed times[] = {
      {"1'05.50 (3%)", 1048000, "(3%)"},
      {" 1:02'05.50 x", 59608000, "x"},
      {"2: x", 115200000, "x"},
      {"7.5 x", 120000, "x"},
      {"x:1'y 5", 960000, "5"},  // what is no number counts as 0 in its place
      {"1'30", 960000, "30"},    // without the terminator the seconds don't count
      {"", 0, ""},
      {"0'05.00 - 1:02'05.50 ", 80000, "- 1:02'05.50 "},  // the hours of the second stay there
  };
  for (const Typed& typed : times) {
    std::string_view text = typed.text;
    EXPECT_EQ(parse_time(text, ' '), typed.bytes) << typed.text;
    EXPECT_EQ(text, typed.rest) << typed.text;
  }
}

TEST_F(TimeMapping, TakesOnlyWholeTimes) {
  EXPECT_EQ(whole_time("65.5s"), 65.5);
  EXPECT_EQ(whole_time("1'05.50"), 65.5);
  EXPECT_EQ(whole_time("1:02'05.50"), 3725.5);
  EXPECT_EQ(whole_time("125'0"), 7500);
  for (const char* text : {"", "s", "65.5", "-5s", "1'", "'5", ":1'5", "1:2", "1:2:3'4", "1'5s",
                           "1.5'2", "1' 5", "1'5.", "1e3s", "1'5'6"})
    EXPECT_EQ(whole_time(text), std::nullopt) << text;
}

}  // namespace
}  // namespace corvelin::test
