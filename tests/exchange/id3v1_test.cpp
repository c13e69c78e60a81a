// SPDX-License-Identifier: GPL-2.0-or-later
// The fields of the ID3v1 record.
#include "exchange/id3v1.h"

#include "edit/editor.h"
#include "model/stream_info.h"
#include "settings/settings.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

std::string padded(std::string text, std::size_t size) {
  text.resize(size);
  return text;
}

class Id3v1Test : public CoreTest {
 protected:
  std::string record(std::size_t from, std::size_t size) {
    return std::string(document.stream.id3v1.begin(), document.stream.id3v1.end())
        .substr(from, size);
  }
  bool open_with(std::string tag) {
    return open("a.mp3", Mp3Builder{}.frames(20).raw(padded(std::move(tag), 128)).bytes());
  }
  bool open_untagged() { return open("a.mp3", frames(20)); }
};

TEST_F(Id3v1Test, GenresHaveNamesAndNumbers) {
  const std::pair<std::uint32_t, std::string> genres[] = {
      {0, "Blues"}, {62, "Pop/Funk"}, {85, "Bebob"}, {147, "Synthpop"}};
  for (const auto& [index, name] : genres) {
    EXPECT_EQ(genre_name(index), name);
    EXPECT_EQ(genre_index(name), index);
  }
  EXPECT_EQ(genre_name(148), "148");
  EXPECT_EQ(genre_index("148"), std::nullopt);
}

TEST_F(Id3v1Test, ShowsWhatATagHolds) {
  std::string tag = "TAG" + std::string(30, 't') + padded("M\xFCller", 60) + "1999" +
                    padded("note", 29) + "\x07\x11";
  ASSERT_TRUE(open_with(tag));
  TagDialog dialog = tag_dialog_load(document);
  EXPECT_TRUE(dialog.create_tag);
  EXPECT_EQ(dialog.title + dialog.artist + dialog.album + dialog.year + dialog.comment,
            std::u16string(30, u't') + u"M\u00FCller1999note");
  EXPECT_EQ(dialog.track, 7U);
  EXPECT_EQ(dialog.genre, "Rock");
  // What the user did not change stays to the byte; the track 200 is negative as a signed byte.
  document.stream.id3v1[126] = 200;
  document.stream.id3v1[127] = 148;
  dialog = tag_dialog_load(document);
  EXPECT_EQ(dialog.track, 0U);
  EXPECT_EQ(dialog.genre, "");
  tag_dialog_apply(document, open_state, dialog);
  EXPECT_EQ(document.stream.id3v1[127], 255);
  document.stream.id3v1[126] = 7;
  document.stream.id3v1[125] = 'x';  // the comment's last bytes, no track
  EXPECT_EQ(tag_dialog_load(document).track, 0U);
  // UTF-8 in the tag: the second byte of the letter is none of the code page.
  ASSERT_TRUE(open_with("TAG\xC3\x81rv"));
  dialog = tag_dialog_load(document);
  dialog.year = u"2001";
  tag_dialog_apply(document, open_state, dialog);
  EXPECT_EQ(record(3, 94), padded("\xC3\x81rv", 90) + "2001");
}

TEST_F(Id3v1Test, ATrackTakesTwoBytesOfTheComment) {
  ASSERT_TRUE(open_untagged());
  EXPECT_FALSE(tag_dialog_load(document).create_tag);
  const std::u16string comment = u"123456789012345678901234567890";
  tag_dialog_apply(document, open_state,
                   {.create_tag = true, .title = u"a \u20AC \u4E00", .comment = comment});
  EXPECT_EQ(record(0, 33), padded("TAGa \x80 ?", 33));
  EXPECT_EQ(record(97, 31), "123456789012345678901234567890\xFF");
  EXPECT_TRUE(kept_id3v1(document, open_state));
  tag_dialog_apply(document, open_state,
                   {.create_tag = true, .comment = comment, .track = 261, .genre = "Jazz"});
  EXPECT_EQ(record(97, 31), std::string("1234567890123456789012345678\0\x05\x08", 31));
}

TEST_F(Id3v1Test, WithTheBoxOffTheRecordStays) {
  ASSERT_TRUE(open_with("TAGold"));
  tag_dialog_apply(document, open_state, {.title = u"new"});
  EXPECT_EQ(record(3, 3), "old");
  EXPECT_EQ(settings.save_id3v1, 0U);
  EXPECT_FALSE(kept_id3v1(document, open_state));
  settings.save_id3v1 = 1;
  keep_id3v1_as_set(document, open_state);
  EXPECT_TRUE(kept_id3v1(document, open_state));
  ASSERT_TRUE(open_untagged());
  keep_id3v1_as_set(document, open_state);  // there is nothing to keep
  EXPECT_FALSE(kept_id3v1(document, open_state));
  ASSERT_TRUE(open("a.aac", Mp3Builder{}.adts(20, 300).id3v1("x").bytes()));
  EXPECT_FALSE(kept_id3v1(document, open_state) || can_create_tag(document) ||
               can_edit_tag(document, tag_dialog_load(document)));
}

TEST_F(Id3v1Test, NamesFromTheCueReplaceAllButTheGenre) {
  ASSERT_TRUE(open_untagged());
  document.sheet_artist = u"Band";
  document.parts[0].part_title = std::u16string(40, u'x');
  TagDialog dialog = {.album = u"old", .year = u"1999", .comment = u"c", .genre = "Jazz"};
  names_from_current_cue(document, dialog);
  EXPECT_EQ(dialog.title, std::u16string(30, u'x'));
  EXPECT_EQ(dialog.artist + dialog.album + dialog.year + dialog.comment, u"Band");
  EXPECT_EQ(dialog.track, 1U);
  EXPECT_EQ(dialog.genre, "Jazz");
}

TEST_F(Id3v1Test, PiecesBuildOnTheTagOfTheSource) {
  ASSERT_TRUE(open_with(padded("TAGold title" + std::string(21, 'z') + "old artist", 97) +
                        std::string(30, 'c') + "\x05"));
  document.parts[0].part_title = u"One";
  document.sheet_title = u"Album";
  document.stream.id3v1 = id3v1_of_piece(document, kept_id3v1(document, open_state), 0, 300);
  EXPECT_EQ(record(0, 128), padded("TAGOne", 33) + padded("old artist", 30) + padded("Album", 34) +
                                std::string(28, 'c') + std::string("\0\x2C\x05", 3));
  // What an untagged file ends with is nothing to build on.
  ASSERT_TRUE(open_untagged());
  document.stream.id3v1.fill('j');
  document.stream.id3v1 = id3v1_of_piece(document, kept_id3v1(document, open_state), 0, 1);
  EXPECT_EQ(record(0, 128), "TAG" + std::string(123, '\0') + "\x01\xFF");
}

}  // namespace
}  // namespace corvelin::test
