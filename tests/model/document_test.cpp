// The part table and its look-ups.
#include "model/document.h"

#include "support/core_test.h"

namespace corvelin::test {
namespace {

class DocumentTest : public CoreTest {
 protected:
  void SetUp() override { ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(10).bytes())); }
};

TEST_F(DocumentTest, EndBelongsToTheLastPartAndWhatIsBehindToTheFirst) {
  document.parts[0].part_size = 417;
  add_part(417, 0, 1000, 834);
  ASSERT_EQ(document.total_size, 1251U);
  EXPECT_EQ(part_at(0), 0);
  EXPECT_EQ(part_at(416), 0);
  EXPECT_EQ(part_at(417), 1);
  EXPECT_EQ(part_at(1251), 1);
  EXPECT_EQ(part_at(1252), 0);
  EXPECT_EQ(part_at(no_position), 0);
}

TEST_F(DocumentTest, NewPartGoesInFrontOfOneAtTheSamePlace) {
  document.parts[0].part_title = u"old";
  EXPECT_EQ(add_part(0, 0, 417, 834), 0);
  ASSERT_EQ(part_count(), 2);
  EXPECT_TRUE(document.parts[0].part_title.empty());
  EXPECT_EQ(document.parts[1].part_title, u"old");
  EXPECT_EQ(document.parts[1].part_beg, 834U);
}

TEST_F(DocumentTest, FilePositionNeverLiesBeforeThePart) {
  document.parts[0].part_filepos = 417;
  EXPECT_EQ(file_pos_of(0, 100), 517U);
  EXPECT_EQ(file_pos_of(0, 0xFFFFFF00), 417U);  // wrapped around
  EXPECT_EQ(file_pos_of(0, 50000), 50417U);     // behind the end: the locator reads on
  document.parts[0].part_size = document.total_size = 0xFFFFFC00;
  EXPECT_EQ(file_pos_of(0, 0xFFFFFB00), 0xFFFFFCA1U);  // the end of a stream of nearly 4 GiB
}

TEST_F(DocumentTest, RemovalKeepsTheCurrentPartInTheTable) {
  document.parts[0].part_size = 417;
  add_part(417, 0, 1000, 834);
  document.current_part = 1;
  EXPECT_EQ(remove_part(1), 0);
  recompute_total();
  EXPECT_EQ(document.current_part, 0);
  EXPECT_EQ(remove_part(7), no_part);
}

TEST_F(DocumentTest, TablesHaveTheirLimits) {
  document.parts[0].part_size = 417;
  for (std::uint32_t i = 1; i < most_parts; ++i) ASSERT_NE(add_part(417 * i, 0, 0, 417), no_part);
  EXPECT_EQ(add_part(0, 0, 0, 417), no_part);
  EXPECT_EQ(add_part(0, 1, 0, 417), no_part);  // no such file

  const std::string name = document.files[0].file_name;
  EXPECT_EQ(add_source_file(name), 0);
  EXPECT_EQ(add_source_file(folder.path("absent.mp3")), std::nullopt);
  document.files.resize(most_files);
  EXPECT_EQ(add_source_file(name), std::nullopt);  // even for one in the table
}

TEST_F(DocumentTest, OnlyAnUnusedLastFileIsRemoved) {
  add_source_file(folder.file("b.mp3", Mp3Builder{}.frames(3).bytes()));
  remove_last_source_file();
  EXPECT_EQ(file_count(), 1);
  remove_last_source_file();
  EXPECT_EQ(file_count(), 1);
}

TEST_F(DocumentTest, PartsAreNamedAfterTheirFilesWhenThereAreSeveral) {
  name_parts_from_files();
  EXPECT_TRUE(document.parts[0].part_title.empty());
  const std::string name = std::string(120, 'n') + ".mp3";
  add_part(document.total_size, *add_source_file(folder.file(name, Mp3Builder{}.frames(3).bytes())),
           0, 417);
  name_parts_from_files();
  EXPECT_EQ(document.parts[0].part_title, u"a.mp3");
  EXPECT_EQ(document.parts[1].part_title.size(), 96U);
}

}  // namespace
}  // namespace corvelin::test
