// SPDX-License-Identifier: GPL-2.0-or-later
// Edit lines: the places in them, and what those that no command stands behind make of a small part
// table.
#include "cli/edit_lines.h"

#include "cli/place.h"
#include "support/edit_test.h"

namespace corvelin::test {
namespace {

class EditLines : public EditTest {
 protected:
  HeadlessHost headless{std::nullopt};

  /// Runs a line, "5f" in it being the begin of frame 5 in bytes.
  Refusal run(const std::string& line) {
    std::string in_bytes;
    std::istringstream words(line);
    for (std::string word; words >> word;) {
      const bool is_frame = word.ends_with('f') && word[0] >= '0' && word[0] <= '9';
      if (is_frame) word = std::to_string(std::stoul(word) * length) + "b";
      in_bytes += word + " ";
    }
    return run_edit_line(editor, in_bytes, headless);
  }
};

struct Row {
  const char* line;
  const char* before;
  const char* after;
  const char* refusal = "";  // a part of it
};

constexpr Row rows[] = {
    {"cut 5f 8f", "0-20:A @10", "0-5:A 8-20 @7 #1 !^"},
    // The places of all ranges mean the stream before the line, in any order, also overlapping.
    {"cut 12f 15f 2f 4f", "0-20:A @18", "0-2:A 4-12 15-20 @13 #2 !^"},
    {"cut 2f 6f 4f 9f 9f 10f", "0-20", "0-2 10-20 !^"},
    {"cut 0 3f 17f end", "0-20:A @19", "3-17*:A @14 !^"},
    {"cut 3f 7f", "0-5g-4 5-20g6", "0-3g-4 7-8g-4 8-20g6 !^"},
    {"cut 5f 5f", "0-20", "0-20", "no frame begins from"},
    {"cut 8f 5f", "0-20", "0-20", "no frame begins from"},
    {"cut 5f - ", "0-20", "0-20", "a begin and an end"},
    {"cut 5f 8f 9f", "0-20", "0-20", "two places"},
    {"cut 0 12f 10f end", "0-20", "0-20", "nothing would be left"},
    {"cut 0 10f 10f end", "0-20", "0-20", "nothing would be left"},  // ranges that touch are one
    {"keep 5f 8f 10f 12f", "0-20:A @11", "5-8*:A 10-12 @4 #1 !^"},
    {"keep 8f 12f 0 3f", "0-5 5-20*:B", "0-3 8-12*:B !^"},
    {"keep 0 end", "0-20", "0-20", "all of the stream"},
    {"cue 5f B", "0-20:A @7", "0-5:A 5-20*:B @7 #1 !^"},
    {"cue 5f", "0-20g3", "0-5g3 5-20*g3 !^"},
    {"cue 5f", "0-5 5-20:B", "0-5 5-20*:B !^"},
    {"cue 5f C", "0-5 5-20:B", "0-5 5-20*:C !^"},
    {"cue 0 T", "0-20:A", "0-20*:T !^"},
    {"cue end T", "0-20", "0-20", "no track begins there"},
    {"cue - T", "0-20", "0-20", "no track begins there"},
    {"seek -", "0-20 @3", "0-20 @3", "nowhere"},
    {"select 3f 8f", "0-20 =1-2", "0-20 =3-8 ^"},
    {"part 2", "0-5 5-20", "0-5 5-20", "the last is 1"},
    {"save a.aac", "0-20", "0-20", "saved as *.mp3"},
    {"save -", "0-20", "0-20", "saved as *.mp3"},
    {"save_project a.mp3", "0-20", "0-20", "neither a project"},
    {"tag titel=x", "0-20", "0-20", "did you mean title?"},
    {"level 0 33", "0-20 =5-15", "0-20 =5-15", "-60 to 32"},
    {"normalize 1.5", "0-20 =0-20", "0-20 =0-20", "-16 to 32"},
    {"every 0.1s", "0-20", "0-4 4-8* 8-12* 12-16* 16-20* !^"},
    {"every 1s", "0-20", "0-20 ^", "no multiple"},
    {"clear_selection", "0-20", "0-20 ^", "nothing is selected"},
    {"edit_restore", "0-20", "0-20 =0-0 !^", "found nothing to do"},
    {"trim_left_out", "0-20", "0-20", "found nothing to do"},
    {"trim_left_out", "0-5 5-20* #1", "0-5 5-20* #1", "found nothing to do"},
    {"move_cue_left", "0-5 8-20* #1", "0-5 8-20* #1", "found nothing to do"},
    {"set_cue_flags", "0-20 =3-5", "0-20 =3-5 ^", "found nothing to do"},
    {"every 0s", "0-20", "0-20", "is no time"},
    {"set volum 3", "0-20", "0-20", "did you mean volume?"},
    {"help crpo", "0-20", "0-20", "did you mean crop?"},
    {"cutt 5f 8f", "0-20", "0-20", "did you mean cut?"},
};

TEST_F(EditLines, MakeOfThePartTable) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    make(row.before);
    const Refusal refusal = run(row.line);
    EXPECT_EQ(refusal.empty(), *row.refusal == '\0') << refusal;
    EXPECT_NE(refusal.find(row.refusal), std::string::npos) << refusal;
    EXPECT_EQ(state(), row.after);
    expect_sound_document();
  }
}

// 20 frames of 1152 samples at 44100 Hz take 0.522 s.
TEST_F(EditLines, PlacesAreTypedInManyForms) {
  const struct {
    const char* word;
    std::uint32_t frame;
    const char* refusal = "";
  } places[] = {
      {"0", 0},
      {"834b", 2},
      {"835b", 3},  // the first frame at or behind it
      {"end", 20},
      {"end-834b", 18},
      {"0.13s", 5},
      {"0:00.13", 5},
      {"0'00.13", 5},
      {"0:00:00.130", 5},
      {"end-0:00.13", 16},
      {"0.526s", 20},  // shown times are rounded
      {"12", 0, "12s are seconds, 12b are bytes"},
      {"12.5", 0, "12.5s are seconds"},
      {"end-7", 0, "end-7s are seconds, end-7b are bytes"},
      {"1:02:05.50", 0, "behind the end"},
      {"8341b", 0, "behind the end"},
      {"99999999999999999999b", 0, "behind the end"},
      {"end-1s", 0, "in front of the start"},
      {"1:61", 0, "is no place"},
      {"1'", 0, "is no place"},
      {"-5s", 0, "is no place"},
      {"1e3s", 0, "is no place"},
      {"1:2:3:4", 0, "is no place"},
      {"x", 0, "is no place"},
      {"", 0, "is no place"},
  };
  for (const auto& place : places) {
    SCOPED_TRACE(place.word);
    const Place found = read_position(editor, place.word);
    EXPECT_EQ(found.refusal.empty(), *place.refusal == '\0') << found.refusal;
    EXPECT_NE(found.refusal.find(place.refusal), std::string::npos) << found.refusal;
    if (!found.refusal.empty()) continue;
    EXPECT_EQ(in_frames(found.pos), std::to_string(place.frame));
  }
  EXPECT_EQ(typed_seconds("1:02'05.50"), 3725.5);
  EXPECT_EQ(typed_seconds("125:00"), 7500);
}

}  // namespace
}  // namespace corvelin::test
