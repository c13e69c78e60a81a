// Who may change the level.
#include "exchange/refusals.h"

#include "support/core_test.h"

namespace corvelin::test {
namespace {

class Refusals : public CoreTest {};

TEST_F(Refusals, LevelCommandsAreForLayerIII) {
  ASSERT_TRUE(open("a.mp3", Mp3Builder{}.frames(10).bytes()));
  EXPECT_TRUE(require_level_control());
  ASSERT_TRUE(open("a.mp2", Mp3Builder{}.shape({.layer = 2}).frames(10).bytes()));
  EXPECT_FALSE(require_level_control());
  Mp3Builder aac;
  for (int i = 0; i < 10; ++i) aac.raw(adts_frame(44100, 300));
  ASSERT_TRUE(open("a.aac", aac.bytes()));
  EXPECT_FALSE(require_level_control());
  ASSERT_EQ(host.boxes.size(), 2U);
  EXPECT_EQ(host.boxes[0].text, "Can't change the level of Layer II.");
  EXPECT_EQ(host.boxes[1].text, "Note: No level adjustment on AAC");
  EXPECT_EQ(host.boxes[1].caption, "Not possible");
  EXPECT_EQ(host.boxes[1].icon, BoxIcon::error);
}

}  // namespace
}  // namespace corvelin::test
