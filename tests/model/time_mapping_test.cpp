// SPDX-License-Identifier: GPL-2.0-or-later
// Times against numbers worked out by hand.
#include "model/time_mapping.h"

#include <gtest/gtest.h>

#include <limits>

#include "edit/editor.h"
#include "model/stream_info.h"
#include "settings/setting_table.h"
#include "settings/settings.h"
#include "shell/start_up.h"

namespace corvelin::test {
namespace {

class TimeMapping : public ::testing::Test {
 protected:
  TimeMapping() {
    settings = default_settings();
    document.stream.avg_bitrate = 128000;  // 16000 bytes per second
  }
  ~TimeMapping() override { settings = default_settings(); }

  Document document;
};

TEST_F(TimeMapping, SeekTableBendsTheScale) {
  // A stream of 25600 bytes whose first 99 % of time take 198/256 of the bytes.
  document.total_size = 25600;
  document.files.resize(1);
  settings.use_toc = 1;
  document.stream.vbr = vbr_header | vbr_toc_usable;
  for (std::size_t i = 0; i < document.stream.toc.size(); ++i)
    document.stream.toc[i] = static_cast<std::uint8_t>(2 * i);
  const std::pair<EditPosition, std::uint32_t> places[] = {
      {0, 0},         {100, 128},
      {300, 384},     {200, 256},      // between entries and on one
      {22000, 25441},                  // behind the last entry: (100 - 36 / 58) %
      {25600, 25600}, {25650, 25602},  // still within 1/256 behind the end
      {25800, 25800}, {no_position, no_position}};
  for (const auto& [pos, scaled] : places) EXPECT_EQ(to_time_scale(document, pos), scaled) << pos;
  const std::pair<std::uint32_t, EditPosition> scale[] = {
      {0, 0},         {128, 100},
      {384, 300},     {25441, 21997},  // 198 + 0.37890625 * 58 of 256
      {25600, 25600}, {0xFFFFFFFF, highest_position}};
  for (const auto& [scaled, pos] : scale)
    EXPECT_EQ(from_time_scale(document, scaled), pos) << scaled;
  document.total_size = 0xFFFFFFFE;  // the end stays the end, whatever the size
  EXPECT_EQ(to_time_scale(document, 0xFFFFFFFE), 0xFFFFFFFEU);
  document.total_size = 25600;
  // It needs the setting, a table and a single file.
  settings.use_toc = 0;
  EXPECT_EQ(to_time_scale(document, 100), 100U);
  settings.use_toc = 1;
  document.stream.vbr = vbr_header;
  EXPECT_EQ(from_time_scale(document, 128), 128U);
  document.stream.vbr = vbr_header | vbr_toc_usable;
  document.files.resize(2);
  EXPECT_EQ(to_time_scale(document, 100), 100U);
  // Any table keeps the ends in place.
  document.files.resize(1);
  document.stream.toc.fill(0);
  EXPECT_EQ(to_time_scale(document, 0), 0U);
  EXPECT_EQ(to_time_scale(document, 25600), 25600U);
  document.stream.toc.fill(255);
  document.stream.toc[0] = 0;
  EXPECT_EQ(to_time_scale(document, 25600), 25600U);
  EXPECT_EQ(from_time_scale(document, 512), 25500U);  // two equal entries at 255
  document = {};
  EXPECT_EQ(to_time_scale(document, 100), 100U);
}

TEST_F(TimeMapping, FormatsTimes) {
  const double infinite = std::numeric_limits<double>::infinity();
  struct {
    EditPosition bytes;
    double rate;
    const char* text;
  } const rows[] = {{1048000, 128000, "1'05.50"},
                    {57599990, 128000, "59'60.00"},  // 3599999 ms; nothing is carried
                    {57600000, 128000, "1:00'00.00"},
                    {59608000, 128000, "1:02'05.50"},
                    {1000, 0, "0'00.00"},
                    {1000, -1, "0'00.00"},
                    {1000, infinite, "0'00.00"},
                    {1000, std::numeric_limits<double>::quiet_NaN(), "0'00.00"},
                    {1000, 1e-30, "1193:02'47.30"}};  // 2^32 - 1 ms
  for (const auto& row : rows) EXPECT_EQ(format_time(row.bytes, row.rate), row.text);
  settings.show_milisec = 1;
  EXPECT_EQ(format_time(80018, 128000), "0'05.001");
  EXPECT_EQ(format_time(80000, 128000, SecondsForm::recording), "0'05.0");
}

TEST_F(TimeMapping, AbsurdTimesGiveDefinedPlaces) {
  EXPECT_EQ(time_to_position(document, 1.5), 24000U);
  EXPECT_EQ(time_to_position(document, -1), 0U);
  EXPECT_EQ(time_to_position(document, 1e12), highest_position);
  document.stream.avg_bitrate = std::numeric_limits<float>::infinity();
  EXPECT_EQ(time_to_position(document, 1), highest_position);
  EXPECT_EQ(time_to_position(document, 0), 0U);
  document.stream.avg_bitrate = 0;
  EXPECT_EQ(time_to_position(document, 1e300), 0U);
}

TEST_F(TimeMapping, ReadsTypedTimes) {
  struct {
    std::string_view text;
    std::uint32_t bytes;
    std::string_view rest;
  } const times[] = {
      {"1'05.50 (3%)", 1048000, "(3%)"},
      {" 1:02'05.50 x", 59608000, "x"},
      {"2: x", 115200000, "x"},
      {"7.5 x", 120000, "x"},
      {"x:1'y 5", 960000, "5"},  // what is no number counts as 0 in its place
      {"1'30", 960000, "30"},    // without the terminator the seconds don't count
      {"", 0, ""},
      {"0'05.00 - 1:02'05.50 ", 80000, "- 1:02'05.50 "},  // the hours of the second stay there
  };
  for (const auto& typed : times) {
    std::string_view text = typed.text;
    EXPECT_EQ(parse_time(document, text, ' '), typed.bytes) << typed.text;
    EXPECT_EQ(text, typed.rest) << typed.text;
  }
}

}  // namespace
}  // namespace corvelin::test
